#include "calc/register_command.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "archive/data_folder.h"
#include "archive/file_section.h"
#include "archive/parallel.h"
#include "archive/register.h"
#include "archive/register_page.h"
#include "archive/register_tables.h"
#include "calc/given_files.h"
#include "calc/options.h"
#include "calc/progress_line.h"
#include "common/calendar.h"
#include "common/text.h"

namespace tonvale {

namespace {

enum class RegisterFormat { kHtml, kCsv, kJson };

constexpr std::array<Choice<RegisterFormat>, 3> kFormats{{
    {"html", RegisterFormat::kHtml},
    {"csv", RegisterFormat::kCsv},
    {"json", RegisterFormat::kJson},
}};

struct RegisterOptions {
    RegisterFormat format = RegisterFormat::kHtml;
    std::string output;  // empty: standard output
    std::string title = "Registro dei file di dati";
    std::string separator = ";";
    bool opens = false;
    std::vector<std::string> paths = {};
};

// Where the page goes that is to be opened and for which no file is named.
constexpr std::string_view kDefaultName = "registro.html";

// What tells spreadsheets that a file is UTF-8.
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string DefaultOutput(const std::string& folder) {
    const bool needs_separator = FolderPart(folder).size() < folder.size();
    return folder + (needs_separator ? "/" : "") + std::string(kDefaultName);
}

// What is wrong with the options taken; empty when all is well.
std::string Complaint(const RegisterOptions& options) {
    if (options.paths.empty()) return "nessuna cartella indicata";
    // An archive must not be written over by its own register.
    if (FileKindOfPath(options.output) != nullptr) {
        return "un registro non può avere il nome di un file di dati: " + options.output;
    }
    if (options.opens && options.output.empty() && options.format != RegisterFormat::kHtml) {
        return "indicare --uscita";
    }
    return {};
}

// False when the command line is wrong; standard error says why.
bool TakeOptions(std::span<const std::string> arguments, RegisterOptions& options,
                 Console& console) {
    const std::vector<Option> known{
        ChoiceOption("--formato", kFormats, options.format),
        TextOption("--uscita", options.output),
        TextOption("--titolo", options.title),
        TextOption("--separatore", options.separator),
        FlagOption("--apri", options.opens),
    };
    ParsedArguments parsed = ParseOptions(arguments, known);
    options.paths = std::move(parsed.rest);
    const std::string complaint = parsed.error ? *parsed.error : Complaint(options);
    if (!complaint.empty()) WrongCommandLine(console, complaint);
    return complaint.empty();
}

// False when there is a file in the way that is no register: nobody has asked for it to go.
bool TakeDefaultOutput(RegisterOptions& options, FileSystem& files, Console& console) {
    if (!options.opens || !options.output.empty()) return true;
    options.output = DefaultOutput(options.paths.front());
    std::string bytes;
    const bool is_there = files.Read(options.output, bytes) == FileError::kNone;
    if (!is_there || bytes.starts_with(RegisterPageStart())) return true;
    ReportFile(console, options.output, "il file esiste e non è un registro: indicare --uscita");
    return false;
}

// What is told of one file.
struct Entry {
    RegisterRow row;
    Html section = {};
};

Entry MakeEntry(std::size_t number, const FoundFile& found, FileSystem& files, bool has_section) {
    Entry entry;
    const OpenedFile opened = OpenDataFile(found, files);
    Assessment assessment;
    const bool is_assessed = opened.problem.empty();
    if (is_assessed) assessment = opened.kind->assess(opened.file);
    entry.row = is_assessed ? MakeRegisterRow(found, opened.kind->kind, opened.file, assessment)
                            : MakeUnreadableRow(found, opened.problem);
    if (const auto time = files.ModifiedTime(found.path)) entry.row.date = LocalDate(*time);
    if (has_section) {
        entry.section = FileSection(number, entry.row, is_assessed ? &assessment : nullptr);
    }
    return entry;
}

// The entries in the order of the files; nullopt when the user has interrupted it.
std::optional<std::vector<Entry>> MakeEntries(const std::vector<FoundFile>& found,
                                              FileSystem& files, Console& console,
                                              bool has_sections) {
    std::vector<Entry> entries(found.size());
    ProgressLine progress(console);
    const bool complete = ForEachInParallel(
        found.size(),
        [&](std::size_t i) { entries[i] = MakeEntry(i, found[i], files, has_sections); },
        [&](std::size_t done) {
            progress.Show("File letti:", done, found.size());
            return !console.IsInterrupted();
        });
    if (!complete) return std::nullopt;
    return entries;
}

std::string WriteRegister(const RegisterOptions& options, const Register& archive,
                          std::vector<Html> sections) {
    switch (options.format) {
        case RegisterFormat::kCsv:
            return (options.output.empty() ? "" : std::string(kUtf8Mark)) +
                   RegisterAsCsv(archive, options.separator);
        case RegisterFormat::kJson:
            return RegisterAsJson(archive);
        case RegisterFormat::kHtml:
            break;
    }
    return RegisterPage(archive, std::move(sections));
}

// Puts the register where it is to go and opens it; false, told on standard error, when it cannot.
bool Deliver(const RegisterOptions& options, const std::string& text, FileSystem& files,
             Console& console) {
    if (options.output.empty()) {
        console.Write(text);
        return true;
    }
    const FileError error = WriteFileSafely(files, options.output, text);
    if (error != FileError::kNone) {
        ReportFile(console, options.output,
                   "impossibile scrivere il file: " + std::string(Reason(error)));
        return false;
    }
    if (!options.opens || console.OpenDocument(options.output)) return true;
    ReportFile(console, options.output, "il registro è scritto, ma non si è potuto aprirlo");
    return false;
}

bool IsRead(const RegisterRow& row) {
    return row.consistent || row.message.empty();
}

// What the rows say of the files: told on standard error, where a file could not be read.
int StatusOf(const std::vector<RegisterRow>& rows, const std::vector<FoundFile>& found,
             Console& console) {
    int status = kExitSuccess;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!IsRead(rows[i])) {
            ReportFile(console, found[i].path, rows[i].message);
            status = kExitFailure;
        } else if (rows[i].consistent == false) {
            status = std::max(status, kExitFindings);
        }
    }
    return status;
}

}  // namespace

int RunRegistro(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    RegisterOptions options;
    if (!TakeOptions(arguments, options, console)) return kExitFailure;
    if (!TakeDefaultOutput(options, files, console)) return kExitFailure;
    const GivenFiles given = FindGivenFiles(options.paths, files, console);
    if (console.IsInterrupted()) return Interrupted(console);
    if (given.files.empty()) return kExitFailure;  // told already; nothing is written over
    const bool is_page = options.format == RegisterFormat::kHtml;
    auto entries = MakeEntries(given.files, files, console, is_page);
    if (!entries || console.IsInterrupted()) return Interrupted(console);

    Register archive{ValidUtf8(options.title), LocalDate(std::time(nullptr)), {}};
    std::vector<Html> sections;
    for (Entry& entry : *entries) {
        archive.rows.push_back(std::move(entry.row));
        if (is_page) sections.push_back(std::move(entry.section));
    }
    entries.reset();
    const int status = StatusOf(archive.rows, given.files, console);
    // With nothing to tell, an old register is not written over.
    if (std::none_of(archive.rows.begin(), archive.rows.end(), IsRead)) return kExitFailure;
    const std::string text = WriteRegister(options, archive, std::move(sections));
    const bool delivered = Deliver(options, text, files, console);
    return delivered && given.all_found ? status : kExitFailure;
}

}  // namespace tonvale
