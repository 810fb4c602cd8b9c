// Daily exposure: recomputing a list, and its file read and written.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "common/file_system.h"
#include "common/numbers.h"
#include "exposure/daily_exposure.h"

namespace tonvale {
namespace {

DailyExposureForm FormOfItems(long long count) {
    DailyExposureForm form;
    form.time_unit = 1;
    for (long long i = 0; i < count; ++i) {
        form.items.push_back({FormatFixed(70.0 + static_cast<double>(i % 300) * 0.1, 4, 1), "2.5"});
    }
    return form;
}

void RecomputeItems(benchmark::State& state) {
    DailyExposureForm form = FormOfItems(state.range(0));
    DailyExposureState kept;
    for ([[maybe_unused]] auto _ : state) {
        Recompute(form, kept);
        benchmark::DoNotOptimize(form.daily_level_dba);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(RecomputeItems)->Arg(10)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

std::string TemporaryPath() {
    return (std::filesystem::temp_directory_path() / "tonvale_benchmark.lep").string();
}

void SaveFile(benchmark::State& state) {
    const DailyExposureForm form = FormOfItems(state.range(0));
    const std::string path = TemporaryPath();
    for ([[maybe_unused]] auto _ : state) {
        ProfileFile file;
        StoreForm(form, file);
        if (file.Save(SystemFiles(), path) != FileError::kNone) state.SkipWithError("cannot save");
    }
    std::filesystem::remove(path);
}
BENCHMARK(SaveFile)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void LoadFile(benchmark::State& state) {
    const std::string path = TemporaryPath();
    ProfileFile file;
    StoreForm(FormOfItems(state.range(0)), file);
    file.Save(SystemFiles(), path);
    for ([[maybe_unused]] auto _ : state) {
        DailyExposureForm form;
        ProfileFile read;
        ProfileFile::Read(SystemFiles(), path, read);
        if (!LoadForm(read, form)) state.SkipWithError("cannot load");
        benchmark::DoNotOptimize(form.items);
    }
    std::filesystem::remove(path);
}
BENCHMARK(LoadFile)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tonvale
