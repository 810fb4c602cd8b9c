#include "common/file_kinds.h"

#include <algorithm>
#include <utility>

#include "common/text.h"

namespace tonvale {
namespace {

constexpr std::array<FileKindInfo, 9> kFileKinds = {{
    {FileKind::kLepd, "LEPD", ".lep", "Lep,d (*.lep)|*.lep|"},
    {FileKind::kLepw, "LEPW", ".lew", "Lep,w (*.lew)|*.lew|"},
    {FileKind::kLeg, "LEG", ".leg", "Leq gruppi (*.leg)|*.leg|"},
    {FileKind::kIlg, "ILG", ".ilg", "Danno (*.ilg)|*.ilg|"},
    {FileKind::kSpr, "SPR", ".spr", "Spettro rumore (*.spr)|*.spr|"},
    {FileKind::kSpi, "SPI", ".spi", "Spettro DPI (*.spi)|*.spi|"},
    {FileKind::kDpi, "DPI", ".dpi", "Scelta DPI (*.dpi)|*.dpi|"},
    {FileKind::kErr, "ERR", ".err", "Errore di misura (*.err)|*.err|"},
    {FileKind::kReport, "", ".tnv", "Documento di Tonvale (*.tnv)|*.tnv|"},
}};

constexpr bool IsInOrderOfKinds() {
    for (std::size_t i = 0; i < kFileKinds.size(); ++i) {
        if (kFileKinds[i].kind != static_cast<FileKind>(i)) return false;
    }
    return true;
}
static_assert(IsInOrderOfKinds(), "InfoOf takes the kind for the index of its row");

}  // namespace

const std::array<FileKindInfo, 9>& FileKinds() {
    return kFileKinds;
}

const FileKindInfo& InfoOf(FileKind kind) {
    return kFileKinds[static_cast<std::size_t>(kind)];
}

const FileKindInfo* FileKindOfPath(std::string_view path) {
    const std::string_view extension = FileExtension(path);
    const auto found =
        std::find_if(kFileKinds.begin(), kFileKinds.end(), [extension](const FileKindInfo& info) {
            return EqualsIgnoringCase(info.extension, extension);
        });
    return found == kFileKinds.end() ? nullptr : &*found;
}

bool HasKind(const ProfileFile& file, FileKind kind) {
    const std::string_view tag = InfoOf(kind).tag;
    const auto value = file.Text(kHeaderSection, kKindKey, kMaxValueCharacters);
    return value && !tag.empty() && EqualsIgnoringCase(TrimBlanks(*value), tag);
}

void TakeHeaderText(const ProfileFile& file, std::string_view key, std::string& text) {
    if (auto value = file.Text(kHeaderSection, key, kMaxValueCharacters)) text = std::move(*value);
}

std::optional<ProfileFile> ReadDataFile(FileSystem& files, const std::string& path, FileKind kind) {
    ProfileFile file;
    if (ProfileFile::Read(files, path, file) != FileError::kNone) return std::nullopt;
    if (!HasKind(file, kind)) return std::nullopt;
    return file;
}

std::optional<std::string> ReadHeaderValue(FileSystem& files, const std::string& path,
                                           FileKind kind, std::string_view key) {
    const std::optional<ProfileFile> file = ReadDataFile(files, path, kind);
    if (!file) return std::nullopt;
    return file->Text(kHeaderSection, key, kMaxValueCharacters);
}

}  // namespace tonvale
