// Data files of every kind - the examples, and odd ones in tests/golden/cases - go through the
// companion and through their calculator's functions, and the companion answers a list of commands.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/file_kinds.h"
#include "common/text.h"
#include "exposure/daily_exposure.h"
#include "exposure/group_exposure.h"
#include "exposure/uncertainty_file.h"
#include "exposure/weekly_exposure.h"
#include "hearing/audiogram_damage.h"
#include "protectors/attenuation_spectrum.h"
#include "protectors/noise_spectrum.h"
#include "protectors/protector_selection.h"
#include "tests/calc/recording_console.h"
#include "tests/common/faulty_file_system.h"
#include "tests/common/folder_test.h"
#include "tests/common/golden.h"

namespace tonvale {
namespace {

// Wizards have a state instead of a form.
bool LoadForm(const ProfileFile& file, SelectionState& state) {
    return LoadState(file, state);
}
bool LoadForm(const ProfileFile& file, UncertaintyStudy& study) {
    return LoadStudy(file, study);
}
void StoreForm(const SelectionState& state, ProfileFile& file) {
    StoreState(state, file);
}
void StoreForm(const UncertaintyStudy& study, ProfileFile& file) {
    StoreStudy(study, file);
}

// A file opened and saved over another one.
template <typename Form, auto... kKind>
ProfileFile Restored(const ProfileFile& file, ProfileFile over) {
    Form form{kKind()...};
    EXPECT_TRUE(LoadForm(file, form));
    StoreForm(form, over);
    return over;
}

// As the dialog would save it when it was opened anew after having been closed on the file.
template <typename Form, typename State, auto... kKind>
std::string Reopened(const ProfileFile& file) {
    Form form{kKind()...};
    State state{kKind()...};
    EXPECT_TRUE(LoadForm(file, form));
    KeepForm(form, state);
    KeepForm(form, state);  // a dialog may be closed more than once
    ProfileFile stored;
    StoreForm(FormFromState(state), stored);
    return stored.Serialize();
}

struct StoredKind {
    FileKind kind;
    ProfileFile (*restored)(const ProfileFile& file, ProfileFile over);
    std::string (*reopened)(const ProfileFile&) = nullptr;  // of a dialog
};
constexpr StoredKind kStoredKinds[] = {
    {FileKind::kLepd, Restored<DailyExposureForm>, Reopened<DailyExposureForm, DailyExposureState>},
    {FileKind::kLepw, Restored<WeeklyExposureForm>,
     Reopened<WeeklyExposureForm, WeeklyExposureState>},
    {FileKind::kLeg, Restored<GroupExposureForm>, Reopened<GroupExposureForm, GroupExposureState>},
    {FileKind::kIlg, Restored<AudiogramDamageForm>,
     Reopened<AudiogramDamageForm, AudiogramDamageState>},
    {FileKind::kSpr, Restored<SpectrumForm, NoiseSpectrumKind>,
     Reopened<SpectrumForm, SpectrumState, NoiseSpectrumKind>},
    {FileKind::kSpi, Restored<SpectrumForm, AttenuationSpectrumKind>,
     Reopened<SpectrumForm, SpectrumState, AttenuationSpectrumKind>},
    {FileKind::kDpi, Restored<SelectionState>},
    {FileKind::kErr, Restored<UncertaintyStudy>},
};

const StoredKind& KindOf(const ProfileFile& file) {
    const auto* row =
        std::find_if(std::begin(kStoredKinds), std::end(kStoredKinds),
                     [&](const StoredKind& candidate) { return HasKind(file, candidate.kind); });
    if (row == std::end(kStoredKinds)) throw std::runtime_error("no row for this kind");
    return *row;
}

std::string Saved(const ProfileFile& file) {
    return KindOf(file).restored(file, {}).Serialize();
}

// One command, its answer and its status.
std::string Transcript(const std::vector<std::string>& arguments, FileSystem& files) {
    RecordingConsole console;
    const int status = RunCompanion(arguments, files, console);
    std::string text = "$";
    for (const std::string& argument : arguments) text += " " + argument;
    return text + "\n" + console.output + console.errors + "[" + std::to_string(status) + "]\n";
}

// What the companion tells of a file, and how its calculator would save it.
std::string AllOf(const std::string& name, const std::string& bytes) {
    FaultyFileSystem files;
    files.contents[name] = bytes;
    std::string text;
    for (const char* format : {"testo", "csv", "json"}) {
        text += Transcript({"calcola", "--formato", format, name}, files);
    }
    return text + Transcript({"verifica", name}, files);
}

TEST(GoldenFiles, ExamplesGiveWhatTheyGaveAndAreStoredAsTheyWere) {
    std::set<FileKind> kinds;
    for (const std::string& name : FilesIn("examples")) {
        SCOPED_TRACE(name);
        const std::string bytes = ExampleBytes(name);
        const ProfileFile file = ProfileFile::Parse(bytes);
        const StoredKind& kind = KindOf(file);
        EXPECT_EQ(FileKindOfPath(name)->kind, kind.kind);
        kinds.insert(kind.kind);
        EXPECT_EQ(Saved(file), bytes);
        const std::string all = AllOf(name, bytes);
        EXPECT_TRUE(all.ends_with("non coerenti: 0\n[0]\n")) << all;
        ExpectGolden(name, all);
    }
    EXPECT_EQ(kinds.size(), std::size(kStoredKinds)) << "a kind without an example";
}

TEST(GoldenFiles, OddFilesGiveWhatTheyGave) {
    for (const std::string& name : FilesIn("tests/golden/cases")) {
        SCOPED_TRACE(name);
        const std::string bytes = ExampleBytes("../tests/golden/cases/" + name);
        const ProfileFile file = ProfileFile::Parse(bytes);
        const std::string saved = Saved(file);
        std::string all = AllOf(name, bytes) + "saved:\n" + Windows1252ToUtf8(saved);
        const auto reopened = KindOf(file).reopened;
        if (reopened) all += "reopened:\n" + Windows1252ToUtf8(reopened(file));
        ExpectGolden("cases_" + name, all);
        // Saved twice, a file is the same.
        EXPECT_EQ(Saved(ProfileFile::Parse(saved)), saved);
    }
}

std::multiset<std::string> KeysAndValues(const ProfileFile& file) {
    std::multiset<std::string> lines;
    const std::string bytes = file.Serialize();
    for (const std::string_view line : SplitLines(bytes)) {
        if (!line.starts_with('[')) lines.emplace(line);
    }
    return lines;
}

// Of any two files of a kind: fewer rows, a table that is no longer there.
TEST(GoldenFiles, AFileSavedOverAnotherLeavesNothingOfIt) {
    std::vector<ProfileFile> saved;
    for (const std::string folder : {"examples/", "tests/golden/cases/"}) {
        const std::string path = "../" + folder;
        for (const std::string& name : FilesIn(folder)) {
            const ProfileFile file = ProfileFile::Parse(ExampleBytes(path + name));
            saved.push_back(KindOf(file).restored(file, {}));
        }
    }
    for (const ProfileFile& file : saved) {
        const StoredKind& kind = KindOf(file);
        for (const ProfileFile& other : saved) {
            if (!HasKind(other, kind.kind)) continue;
            EXPECT_EQ(KeysAndValues(kind.restored(file, other)), KeysAndValues(file));
        }
    }
}

// Each line of tests/golden/commands.txt is "NAME: ARGUMENTS"; lines of one name are one session. A
// picture that a command writes to v.svg stands behind its answer.
TEST(GoldenFiles, EveryCommandGivesWhatItGave) {
    FaultyFileSystem files;
    for (const char* folder : {"examples", "tests/golden/cases"}) {
        for (const std::string& name : FilesIn(folder)) {
            files.contents[name] = ExampleBytes("../" + std::string(folder) + "/" + name);
        }
    }
    files.contents["altro.txt"] = "ciao";
    files.contents["più.spi"] = files.contents["cuffia_pesante.spi"];
    std::map<std::string, std::string> sessions;
    const std::string commands = ExampleBytes("../tests/golden/commands.txt");
    for (const std::string_view line : SplitLines(commands)) {
        std::istringstream words{std::string(line)};
        std::string name;
        words >> name;
        if (!name.ends_with(':')) continue;  // a comment or an empty line
        name.pop_back();
        const std::vector<std::string> arguments(std::istream_iterator<std::string>(words), {});
        sessions[name] += Transcript(arguments, files);
        if (const auto picture = files.contents.extract("v.svg"))
            sessions[name] += picture.mapped();
    }
    for (const auto& [name, transcript] : sessions) ExpectGolden(name, transcript);
}

TEST(Companion, TellsThatAPictureCannotBeWritten) {
    FaultyFileSystem files;
    files.steps_to_failure = 1;
    EXPECT_TRUE(Transcript({"previsioni", "--svg", "pieno.svg"}, files)
                    .ends_with("pieno.svg: impossibile scrivere il file: il disco è pieno\n[2]\n"));
    EXPECT_TRUE(files.contents.empty());
}

class CompanionFolderTest : public FolderTest {};

TEST_F(CompanionFolderTest, ClassificaTakesAFolderOfAThousandProtectors) {
    const std::string none = Path("vuota");
    std::filesystem::create_directories(folder_ / "armadio" / "inserti");
    std::filesystem::create_directories(folder_ / "vuota");
    WriteFile("armadio/altro.txt", "niente");
    for (int i = 0; i < 1000; ++i) {
        WriteFile((i % 2 == 0 ? "armadio/" : "armadio/inserti/") + std::to_string(i) + ".spi",
                  "[TONVALE]\nTipo=SPI\nSNR=" + std::to_string(10 + i % 30) + "\n");
    }
    const std::string ranked = Transcript({"classifica", "--laeq", "100", "--metodo",
                                           "snr-corretto", "--formato", "csv", Path("armadio")},
                                          SystemFiles());
    const auto lines = SplitLines(ranked);
    ASSERT_EQ(lines.size(),
              1U + 1 + 1000 + 1);  // the command, the columns, the protectors, the status
    EXPECT_NE(lines[2].find(";29,0;78,0;BUONA;"), std::string_view::npos);
    EXPECT_NE(lines[1001].find(";10,0;97,0;INSUFFICIENTE;"), std::string_view::npos);
    const std::string empty =
        Transcript({"classifica", "--laeq=90", "--formato=json", none}, SystemFiles());
    EXPECT_TRUE(empty.find("\n[]\n") != std::string::npos && empty.ends_with("[2]\n")) << empty;
}

}  // namespace

}  // namespace tonvale
