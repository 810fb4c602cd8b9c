#include "archive/data_folder.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <tuple>
#include <utility>

#include "archive/natural_order.h"
#include "common/numbers.h"

namespace tonvale {

namespace {

std::string Join(std::string folder, const std::string& name) {
    const bool needs_separator = FolderPart(folder).size() < folder.size();
    if (needs_separator) folder += static_cast<char>(std::filesystem::path::preferred_separator);
    return folder += name;
}

// The own name of a folder, whatever separators end its path; empty for "." and the like.
std::string OwnName(std::string_view path) {
    path = path.substr(0, path.find_last_not_of("/\\") + 1);  // npos + 1 is 0
    std::string name(FileName(path));
    const bool is_name = name != "." && name != ".." && !name.ends_with(':');
    return is_name ? name : std::string();
}

std::string JoinShown(const std::string& folder, const std::string& name) {
    return folder.empty() ? name : folder + "/" + name;
}

struct SortedItem {
    std::string key;
    FolderItem item;
};

// Folders first.
bool ComesBefore(const SortedItem& a, const SortedItem& b) {
    return std::forward_as_tuple(!a.item.is_folder, a.key, a.item.name) <
           std::forward_as_tuple(!b.item.is_folder, b.key, b.item.name);
}

class Search {
  public:
    explicit Search(const FolderSearch& task) : task_(task) {}

    void Take(const std::string& path) {
        FolderContents contents;
        const FileError error = task_.files.ReadFolder(path, contents);
        if (error == FileError::kMissingFolder) {
            found_.push_back({path, {}, std::string(FileName(path))});
            return;
        }
        const std::size_t found_before = found_.size();
        meets_known_folder_ = false;
        WalkIfRead(error, path, NewShownName(path), contents);
        const bool finds_any = found_.size() > found_before || meets_known_folder_;
        if (error == FileError::kNone && !finds_any) {
            Report(path, "nessun file di dati in questa cartella");
        }
    }

    std::vector<FoundFile> TakeFound() { return std::move(found_); }

  private:
    // The folder's own name, with a number where another one asked for has it, too.
    std::string NewShownName(const std::string& path) {
        const std::string name = OwnName(path);
        std::string shown = name;
        for (int number = 2; !shown_names_.insert(shown).second; ++number) {
            shown = name + " (" + FormatInteger(number) + ")";
        }
        return shown;
    }

    void Report(const std::string& path, std::string_view reason) const {
        if (task_.report) task_.report(path, reason);
    }

    bool IsWanted(const std::string& name) const {
        const FileKindInfo* info = FileKindOfPath(name);
        if (info == nullptr || info->tag.empty()) return false;
        return !task_.kind || info->kind == *task_.kind;
    }

    void WalkIfRead(FileError error, const std::string& path, const std::string& shown,
                    const FolderContents& contents) {
        if (error != FileError::kNone) return Report(path, Reason(error));
        const bool is_new =
            contents.identity.empty() || identities_.insert(contents.identity).second;
        meets_known_folder_ = meets_known_folder_ || !is_new;
        if (is_new) Walk(path, shown, contents.items);
    }

    void Walk(const std::string& path, const std::string& shown,
              const std::vector<FolderItem>& items) {
        std::vector<SortedItem> sorted;
        for (const FolderItem& item : items) {
            if (item.is_folder || IsWanted(item.name)) {
                sorted.push_back({NaturalKey(item.name), item});
            }
        }
        std::sort(sorted.begin(), sorted.end(), ComesBefore);
        for (const auto& [key, item] : sorted) {
            if (task_.goes_on && !task_.goes_on(found_.size())) return;
            std::string item_path = Join(path, item.name);
            if (!item.is_folder) {
                found_.push_back({std::move(item_path), shown, item.name});
                continue;
            }
            FolderContents below;
            const FileError error = task_.files.ReadFolder(item_path, below);
            WalkIfRead(error, item_path, JoinShown(shown, item.name), below);
        }
    }

    const FolderSearch& task_;
    std::set<std::string> shown_names_;
    std::set<std::string> identities_;
    bool meets_known_folder_ = false;  // below the folder that is being searched
    std::vector<FoundFile> found_;
};

}  // namespace

std::vector<FoundFile> FindDataFiles(std::span<const std::string> paths, const FolderSearch& task) {
    Search search(task);
    for (const std::string& path : paths) search.Take(path);
    return search.TakeFound();
}

}  // namespace tonvale
