#include "archive/data_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "archive/natural_order.h"
#include "tests/common/folder_test.h"
#include "tests/common/folder_tree.h"

namespace tonvale {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(NaturalOrder, SortsAsAPersonDoes) {
    const std::vector<std::string> sorted{"",        "1.lep",    "01b.lep",  "2.lep",   "10.lep",
                                          "a 2 b 9", "A 2 b 10", "a 10 b 1", "caffè 2", "CAFFE 3",
                                          "è 1",     "f",        "z\xFF",    "\xF0\x9F"};
    std::vector<std::string> shuffled = sorted;
    std::reverse(shuffled.begin(), shuffled.end());
    std::sort(shuffled.begin(), shuffled.end(), [](const std::string& a, const std::string& b) {
        return NaturalKey(a) < NaturalKey(b);
    });
    EXPECT_EQ(shuffled, sorted);
    // Too long for any integer.
    EXPECT_LT(NaturalKey("9" + std::string(300, '0')), NaturalKey("1" + std::string(301, '0')));
    EXPECT_EQ(NaturalKey("007"), NaturalKey("7"));
}

struct Searched {
    std::vector<std::string> files;  // "folder|name"
    std::vector<std::string> reports;
};

Searched SearchIn(FileSystem& files, const std::vector<std::string>& paths,
                  std::optional<FileKind> kind = {}) {
    Searched searched;
    FolderSearch search{files, kind};
    search.report = [&](const std::string& path, std::string_view reason) {
        searched.reports.push_back(path + ": " + std::string(reason));
    };
    for (const FoundFile& file : FindDataFiles(paths, search)) {
        searched.files.push_back(file.folder + "|" + file.name);
        std::string bytes;
        EXPECT_EQ(files.Read(file.path, bytes), FileError::kNone) << file.path;
    }
    return searched;
}

class DataFolderTest : public FolderTest {
  protected:
    void Fill(const std::string& folder, const std::vector<std::string>& names) {
        fs::create_directories(folder_ / std::u8string(folder.begin(), folder.end()));
        const std::string start = folder + "/";
        for (const std::string& name : names) WriteFile(start + name, "x");
    }
};

TEST_F(DataFolderTest, FindsEveryDataFileBelowInAStableOrder) {
    Fill("cliente", {"10.lep", "2.LEP", "b.tnv", "c.txt", "lep", ".lew", "~tnv1.tmp"});
    Fill("cliente/Reparto 10", {"z.spr"});
    Fill("cliente/reparto 2/interno", {"perché.dpi"});
    Fill("altro/cliente", {"a.err", "b.spi"});
    const Searched all =
        SearchIn(SystemFiles(), {Path("cliente/"), Path("altro/cliente"), Path("cliente/2.LEP")});
    EXPECT_THAT(all.files,
                ElementsAre("cliente/reparto 2/interno|perché.dpi", "cliente/Reparto 10|z.spr",
                            "cliente|.lew", "cliente|2.LEP", "cliente|10.lep", "cliente (2)|a.err",
                            "cliente (2)|b.spi", "|2.LEP"));
    EXPECT_THAT(all.reports, IsEmpty());
    EXPECT_THAT(SearchIn(SystemFiles(), {Path("altro")}, FileKind::kSpi).files,
                ElementsAre("altro/cliente|b.spi"));
    const Searched none = SearchIn(SystemFiles(), {Path("cliente")}, FileKind::kLeg);
    EXPECT_THAT(none.reports,
                ElementsAre(Path("cliente") + ": nessun file di dati in questa cartella"));
}

TEST_F(DataFolderTest, SearchesNoFolderTwiceAndFollowsNoLink) {
    Fill("cliente/a", {"1.lep"});
    Fill("fuori", {"segreto.lep"});
    std::error_code error;
    fs::create_directory_symlink(folder_ / "cliente", folder_ / "cliente" / "a" / "giro", error);
    fs::create_directory_symlink(folder_ / "fuori", folder_ / "cliente" / "via", error);
    fs::create_symlink(folder_ / "fuori" / "segreto.lep", folder_ / "cliente" / "2.lep", error);
    fs::create_directory_symlink(folder_ / "cliente", folder_ / "scorciatoia", error);
    const Searched searched = SearchIn(SystemFiles(), {Path("cliente/a"), Path("cliente")});
    EXPECT_THAT(searched.files, ElementsAre("a|1.lep"));
    EXPECT_THAT(searched.reports, IsEmpty());
    if (error) return;  // the system makes no links
    // One that is asked for is followed.
    EXPECT_THAT(SearchIn(SystemFiles(), {Path("scorciatoia")}).files,
                ElementsAre("scorciatoia/a|1.lep"));
}

TEST(DataFolder, GoesOnPastFoldersThatItCannotRead) {
    FolderTree tree;
    tree.Add("A", "1.lep", "x");
    tree.folders["A"].items.insert(tree.folders["A"].items.end(),
                                   {{"b", true}, {"c", true}, {"d", true}});
    const std::string below = FolderTree::In("A", "d");
    tree.Add(below, "2.lep", "x");
    tree.folders[below].items.push_back({"giro", true});
    tree.folders[FolderTree::In(below, "giro")] = tree.folders["A"];  // a circle
    tree.errors = {{"chiusa", FileError::kDenied}, {FolderTree::In("A", "b"), FileError::kDenied}};
    const Searched searched = SearchIn(tree, {"A", "chiusa"});
    EXPECT_THAT(searched.files, ElementsAre("A/d|2.lep", "A|1.lep"));
    EXPECT_THAT(searched.reports,
                ElementsAre(FolderTree::In("A", "b") +
                                ": non si ha il permesso di accedere al file o alla cartella",
                            FolderTree::In("A", "c") + ": la cartella non esiste",  // no longer
                            "chiusa: non si ha il permesso di accedere al file o alla cartella"));
    FolderSearch interrupted{tree};
    interrupted.goes_on = [](std::size_t) { return false; };
    EXPECT_THAT(FindDataFiles(std::vector<std::string>{"A"}, interrupted), IsEmpty());
}

}  // namespace
}  // namespace tonvale
