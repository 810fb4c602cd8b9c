// Loading and saving .lep files, side by side with the platform's own profile functions, which
// cost the whole file for every key. Prints one line a size with the ratio of the two times.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include "common/file_system.h"
#include "common/numbers.h"
#include "common/profile_file.h"
#include "exposure/daily_exposure.h"

namespace {

using tonvale::DailyExposureForm;
using tonvale::FormatInteger;
using tonvale::ProfileFile;

double SecondsOf(const std::function<void()>& work, int repetitions) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < repetitions; ++i) work();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count() / repetitions;
}

DailyExposureForm FormOfItems(int count) {
    DailyExposureForm form;
    for (int i = 0; i < count; ++i) form.items.push_back({"90.5", "2.5"});
    return form;
}

void SaveByPlatform(const DailyExposureForm& form, const std::string& path) {
    for (std::size_t i = 0; i < form.items.size(); ++i) {
        const std::string key = FormatInteger(static_cast<long long>(i) + 1);
        WritePrivateProfileStringA("LEQ", key.c_str(), form.items[i].level_dba.c_str(),
                                   path.c_str());
        WritePrivateProfileStringA("TIME", key.c_str(), form.items[i].duration.c_str(),
                                   path.c_str());
    }
}

void LoadByPlatform(int count, const std::string& path) {
    char value[16];
    for (int i = 1; i <= count; ++i) {
        const std::string key = FormatInteger(i);
        GetPrivateProfileStringA("LEQ", key.c_str(), "", value, sizeof value, path.c_str());
        GetPrivateProfileStringA("TIME", key.c_str(), "", value, sizeof value, path.c_str());
    }
}

void Compare(int count, const std::string& folder) {
    const std::string ours = folder + "tonvale_benchmark_a.lep";
    const std::string theirs = folder + "tonvale_benchmark_b.lep";
    const DailyExposureForm form = FormOfItems(count);
    const double save = SecondsOf(
        [&] {
            ProfileFile file;
            StoreForm(form, file);
            file.Save(tonvale::SystemFiles(), ours);
        },
        10);
    const double load = SecondsOf(
        [&] {
            ProfileFile file;
            DailyExposureForm loaded;
            ProfileFile::Read(tonvale::SystemFiles(), ours, file);
            LoadForm(file, loaded);
        },
        10);
    DeleteFileA(theirs.c_str());
    const double platform_save = SecondsOf([&] { SaveByPlatform(form, theirs); }, 1);
    const double platform_load = SecondsOf([&] { LoadByPlatform(count, theirs); }, 1);
    std::printf(
        "%6d items: save %9.3f ms, platform %10.1f ms, %7.0f times;"
        "  load %8.3f ms, platform %10.1f ms, %7.0f times\n",
        count, save * 1e3, platform_save * 1e3, platform_save / save, load * 1e3,
        platform_load * 1e3, platform_load / load);
    std::fflush(stdout);
    DeleteFileA(ours.c_str());
    DeleteFileA(theirs.c_str());
}

}  // namespace

int main() {
    char folder[MAX_PATH];
    GetTempPathA(MAX_PATH, folder);
    for (const int count : {10, 1000, 10000}) Compare(count, folder);
}
