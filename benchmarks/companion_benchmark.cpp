// "tonvale-calc calcola" and "registro" over a folder of 10,000 files in one call, against reading
// their bytes.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "calc/companion.h"
#include "common/numbers.h"
#include "exposure/daily_exposure.h"

namespace tonvale {
namespace {

constexpr int kFileCount = 10000;

// A folder of assessments of six items each, removed at the end.
class Archive {
  public:
    Archive() : folder_(std::filesystem::temp_directory_path() / "tonvale_benchmark_archive") {
        std::filesystem::create_directories(folder_);
        for (int i = 0; i < kFileCount; ++i) {
            DailyExposureForm form;
            DailyExposureState state;
            form.time_unit = 1;
            form.notes = "Reparto presse.\r\nMisure con fonometro di classe 1.";
            for (int item = 0; item < 6; ++item) {
                form.items.push_back({FormatFixed(75 + item * 2.5 + i % 10, 4, 1), "80"});
            }
            Recompute(form, state);
            ProfileFile file;
            StoreForm(form, file);
            paths_.push_back((folder_ / ("file" + FormatInteger(i) + ".lep")).string());
            SystemFiles().WriteNew(paths_.back(), file.Serialize());
        }
    }
    ~Archive() { std::filesystem::remove_all(folder_); }
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;
    const std::vector<std::string>& paths() const { return paths_; }
    std::string folder() const { return folder_.string(); }

  private:
    std::filesystem::path folder_;
    std::vector<std::string> paths_;
};

const Archive& TheArchive() {
    static const Archive archive;
    return archive;
}

class CountingConsole final : public Console {
  public:
    std::size_t bytes = 0;
    void Write(std::string_view text) override { bytes += text.size(); }
    void WriteError(std::string_view text) override { bytes += text.size(); }
};

void ReadBytes(benchmark::State& state) {
    const std::vector<std::string>& paths = TheArchive().paths();
    for ([[maybe_unused]] auto _ : state) {
        std::size_t bytes = 0;
        std::string content;
        for (const std::string& path : paths) {
            SystemFiles().Read(path, content);
            bytes += content.size();
        }
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(ReadBytes)->Unit(benchmark::kMillisecond);

void Calcola(benchmark::State& state, const char* format) {
    std::vector<std::string> arguments{"calcola", "--formato", format};
    arguments.insert(arguments.end(), TheArchive().paths().begin(), TheArchive().paths().end());
    for ([[maybe_unused]] auto _ : state) {
        CountingConsole console;
        if (RunCompanion(arguments, SystemFiles(), console) != kExitSuccess) {
            state.SkipWithError("calcola failed");
        }
        benchmark::DoNotOptimize(console.bytes);
    }
}
BENCHMARK_CAPTURE(Calcola, testo, "testo")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Calcola, json, "json")->Unit(benchmark::kMillisecond);

// To a file, on the disk in the end, as with "--uscita".
void Registro(benchmark::State& state, const char* format) {
    const std::filesystem::path output =
        std::filesystem::temp_directory_path() / (std::string("tonvale_benchmark.") + format);
    const std::vector<std::string> arguments{"registro", "--formato",     format,
                                             "--uscita", output.string(), TheArchive().folder()};
    for ([[maybe_unused]] auto _ : state) {
        CountingConsole console;
        if (RunCompanion(arguments, SystemFiles(), console) != kExitSuccess) {
            state.SkipWithError("registro failed");
        }
    }
    std::filesystem::remove(output);
}
BENCHMARK_CAPTURE(Registro, csv, "csv")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Registro, html, "html")->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace tonvale
