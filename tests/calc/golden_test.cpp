// Data files of every kind - the examples, and odd ones in tests/golden/cases - go through the
// companion and through their calculator's file functions, and every command of the companion that
// needs no other file is run.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
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
#include "tests/common/golden.h"

namespace tonvale {
namespace {

template <typename Form>
std::string Restored(const ProfileFile& file, Form form = {}) {
    ProfileFile stored;
    EXPECT_TRUE(LoadForm(file, form));
    StoreForm(form, stored);
    return stored.Serialize();
}

std::string RestoredNoise(const ProfileFile& file) {
    return Restored(file, SpectrumForm(NoiseSpectrumKind()));
}

std::string RestoredAttenuation(const ProfileFile& file) {
    return Restored(file, SpectrumForm(AttenuationSpectrumKind()));
}

std::string RestoredSelection(const ProfileFile& file) {
    SelectionState state;
    ProfileFile stored;
    EXPECT_TRUE(LoadState(file, state));
    StoreState(state, stored);
    return stored.Serialize();
}

std::string RestoredStudy(const ProfileFile& file) {
    UncertaintyStudy study;
    ProfileFile stored;
    EXPECT_TRUE(LoadStudy(file, study));
    StoreStudy(study, stored);
    return stored.Serialize();
}

// How a file of each kind is loaded and stored again.
struct StoredKind {
    FileKind kind;
    std::string (*restored)(const ProfileFile&);
};
constexpr StoredKind kStoredKinds[] = {
    {FileKind::kLepd, [](const ProfileFile& file) { return Restored<DailyExposureForm>(file); }},
    {FileKind::kLepw, [](const ProfileFile& file) { return Restored<WeeklyExposureForm>(file); }},
    {FileKind::kLeg, [](const ProfileFile& file) { return Restored<GroupExposureForm>(file); }},
    {FileKind::kIlg, [](const ProfileFile& file) { return Restored<AudiogramDamageForm>(file); }},
    {FileKind::kSpr, RestoredNoise},
    {FileKind::kSpi, RestoredAttenuation},
    {FileKind::kDpi, RestoredSelection},
    {FileKind::kErr, RestoredStudy},
};

const StoredKind& KindOf(const ProfileFile& file) {
    const auto* row =
        std::find_if(std::begin(kStoredKinds), std::end(kStoredKinds),
                     [&](const StoredKind& candidate) { return HasKind(file, candidate.kind); });
    if (row == std::end(kStoredKinds)) throw std::runtime_error("no row for this kind");
    return *row;
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
        EXPECT_EQ(kind.restored(file), bytes);
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
        const StoredKind& kind = KindOf(file);
        const std::string saved = kind.restored(file);
        ExpectGolden("cases_" + name, AllOf(name, bytes) + "saved:\n" + Windows1252ToUtf8(saved));
        // Saved twice, a file is the same.
        EXPECT_EQ(kind.restored(ProfileFile::Parse(saved)), saved);
    }
}

TEST(GoldenFiles, EveryCommandGivesWhatItGave) {
    const std::pair<const char*, std::vector<std::string>> commands[] = {
        {"nipts", {"nipts"}},
        {"nipts_json", {"nipts", "--formato", "json"}},
        {"nipts_csv", {"nipts", "--formato", "csv"}},
        {"htla_csv",
         {"nipts", "--quantita=htla", "--eta=25", "--sesso", "f", "--tabella", "biologico",
          "--formato", "csv", "--separatore", "|"}},
        {"nipts_tabella", {"nipts", "--svg", "v.svg", "--vista", "tabella"}},
        {"nipts_grafico", {"nipts", "--svg", "v.svg"}},
        {"nipts_audiogramma", {"nipts", "--svg", "v.svg", "--vista", "audiogramma"}},
        {"nipts_senza_valori",
         {"nipts", "--quantita=NIPTS", "--anni=-5", "--formato=json", "--svg", "v.svg"}},
        {"previsioni", {"previsioni", "--frequenza", "3000", "--frattile", "50"}},
        {"previsioni_json", {"previsioni", "--livello", "86", "--formato=json"}},
        {"previsioni_csv", {"previsioni", "--formato=csv"}},
        {"previsioni_tabella", {"previsioni", "--svg", "v.svg", "--vista", "tabella"}},
        {"previsioni_tempo", {"previsioni", "--svg", "v.svg"}},
        {"previsioni_livello", {"previsioni", "--svg", "v.svg", "--vista", "livello"}},
        {"rischio", {"rischio"}},
        {"rischio_json", {"rischio", "--formato=json"}},
        {"rischio_grafico", {"rischio", "--svg", "v.svg"}},
        {"evoluzione", {"evoluzione"}},
        {"evoluzione_json", {"evoluzione", "--formato=json"}},
        {"evoluzione_grafico", {"evoluzione", "--svg", "v.svg"}},
        {"grafico", {"grafico", "sega_circolare.spr"}},
        {"grafico_dpi", {"grafico", "--svg", "v.svg", "cuffia_pesante.spi"}},
    };
    for (const auto& [name, arguments] : commands) {
        FaultyFileSystem files;
        for (const char* example : {"sega_circolare.spr", "cuffia_pesante.spi"}) {
            files.contents[example] = ExampleBytes(example);
        }
        const std::string output = Transcript(arguments, files);
        ExpectGolden(name, output + files.contents["v.svg"]);
    }
}

}  // namespace
}  // namespace tonvale
