// Hearing protectors: one recomputation and one chart, and "tonvale-calc classifica" over a folder
// of 1,000 protectors, against reading their files.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "calc/companion.h"
#include "common/numbers.h"
#include "common/svg_canvas.h"
#include "protectors/attenuation_spectrum.h"

namespace tonvale {
namespace {

constexpr int kProtectorCount = 1000;

SpectrumForm FormOfProtector(int number) {
    SpectrumForm form(AttenuationSpectrumKind());
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        form.bands[i] = FormatFixed(10.0 + 3.0 * static_cast<double>(i) + number % 17, 4, 1);
    }
    Recompute(form);
    form.notes = "Misure del laboratorio.\r\nTaglia unica.";
    return form;
}

// A folder of protectors and a noise, removed at the end.
class Cabinet {
  public:
    Cabinet() : folder_(std::filesystem::temp_directory_path() / "tonvale_benchmark_cabinet") {
        std::filesystem::create_directories(folder_);
        for (int i = 0; i < kProtectorCount; ++i) {
            ProfileFile file;
            StoreForm(FormOfProtector(i), file);
            paths_.push_back((folder_ / ("dpi" + FormatInteger(i) + ".spi")).string());
            SystemFiles().WriteNew(paths_.back(), file.Serialize());
        }
        SystemFiles().WriteNew(noise_path(),
                               "[TONVALE]\nTipo=SPR\n[SPECTRUM]\n125=84\n250=86\n500=90\n1000=93\n"
                               "2000=95\n4000=92\n8000=87\n");
    }
    ~Cabinet() { std::filesystem::remove_all(folder_); }
    Cabinet(const Cabinet&) = delete;
    Cabinet& operator=(const Cabinet&) = delete;
    std::string folder() const { return folder_.string(); }
    std::string noise_path() const { return (folder_ / "rumore.spr").string(); }
    const std::vector<std::string>& paths() const { return paths_; }

  private:
    std::filesystem::path folder_;
    std::vector<std::string> paths_;
};

const Cabinet& TheCabinet() {
    static const Cabinet cabinet;
    return cabinet;
}

void ReadProtectors(benchmark::State& state) {
    const std::vector<std::string>& paths = TheCabinet().paths();
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
BENCHMARK(ReadProtectors)->Unit(benchmark::kMillisecond);

void RecomputeRatings(benchmark::State& state) {
    SpectrumForm form = FormOfProtector(0);
    for ([[maybe_unused]] auto _ : state) {
        Recompute(form);
        benchmark::DoNotOptimize(form.results);
    }
}
BENCHMARK(RecomputeRatings)->Unit(benchmark::kMicrosecond);

void DrawSpectrum(benchmark::State& state) {
    const SpectrumForm form = FormOfProtector(0);
    for ([[maybe_unused]] auto _ : state) {
        SvgCanvas canvas({400, 200});
        DrawChart(canvas, {0, 0, 400, 200}, form, kChartGround);
        benchmark::DoNotOptimize(canvas);
    }
}
BENCHMARK(DrawSpectrum)->Unit(benchmark::kMicrosecond);

class CountingConsole final : public Console {
  public:
    std::size_t bytes = 0;
    void Write(std::string_view text) override { bytes += text.size(); }
    void WriteError(std::string_view text) override { bytes += text.size(); }
};

void Classifica(benchmark::State& state, const char* format) {
    const std::vector<std::string> arguments{"classifica", "--rumore", TheCabinet().noise_path(),
                                             "--formato",  format,     TheCabinet().folder()};
    for ([[maybe_unused]] auto _ : state) {
        CountingConsole console;
        if (RunCompanion(arguments, SystemFiles(), console) != kExitSuccess) {
            state.SkipWithError("classifica failed");
        }
        benchmark::DoNotOptimize(console.bytes);
    }
}
BENCHMARK_CAPTURE(Classifica, testo, "testo")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Classifica, json, "json")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tonvale
