// What one redraw of a small control costs on the software raster: the
// face's fill against the memory's own speed, the bevel's lines, and a
// caption with its glyphs already rendered.

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "kestu/raster/Raster.h"

namespace {

constexpr int kControlWidth = 120;
constexpr int kControlHeight = 24;
constexpr kestu::Rgb kFace = 0x00C0C0C0;
constexpr kestu::Rgb kLight = 0x00FFFFFF;
constexpr kestu::Rgb kShadow = 0x00808080;

// The floor: clearing the same bytes with memset.
void BM_MemsetControlFace(benchmark::State& state) {
  std::vector<uint32_t> pixels(kControlWidth * kControlHeight);
  for (auto _ : state) {
    std::memset(pixels.data(), 0xC0, pixels.size() * sizeof(uint32_t));
    benchmark::DoNotOptimize(pixels.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(pixels.size() * 4));
}
BENCHMARK(BM_MemsetControlFace);

void BM_FillControlFace(benchmark::State& state) {
  kestu::Raster raster(kControlWidth, kControlHeight);
  for (auto _ : state) {
    raster.FillRect({0, 0, kControlWidth, kControlHeight}, kFace, kestu::RasterOp::CopyPen);
    benchmark::DoNotOptimize(raster.Pixels().data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kControlWidth * kControlHeight * 4);
}
BENCHMARK(BM_FillControlFace);

// The file copier's bar over its caption.
void BM_NotXorBar(benchmark::State& state) {
  kestu::Raster raster(kControlWidth, kControlHeight);
  for (auto _ : state) {
    raster.FillRect({0, 0, kControlWidth, kControlHeight}, 0x000080, kestu::RasterOp::NotXorPen);
    benchmark::DoNotOptimize(raster.Pixels().data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kControlWidth * kControlHeight * 4);
}
BENCHMARK(BM_NotXorBar);

// One frame: the light lines along the top and left, the shadow along the
// bottom and right.
void Frame(kestu::Raster& raster, int left, int top, int right, int bottom) {
  raster.DrawLine(left, top, right, top, kLight, kestu::RasterOp::CopyPen);
  raster.DrawLine(left, top, left, bottom, kLight, kestu::RasterOp::CopyPen);
  raster.DrawLine(left, bottom, right + 1, bottom, kShadow, kestu::RasterOp::CopyPen);
  raster.DrawLine(right, top, right, bottom, kShadow, kestu::RasterOp::CopyPen);
}

void BM_PanelBevel(benchmark::State& state) {
  kestu::Raster raster(kControlWidth, kControlHeight);
  for (auto _ : state) {
    Frame(raster, 0, 0, kControlWidth - 1, kControlHeight - 1);
    Frame(raster, 1, 1, kControlWidth - 2, kControlHeight - 2);
    benchmark::DoNotOptimize(raster.Pixels().data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_PanelBevel);

void BM_PrintTwelveCharacters(benchmark::State& state) {
  kestu::Raster raster(kControlWidth, kControlHeight);
  const kestu::FontSpec font{"MS Sans Serif", 11.0};
  raster.DrawText(font, "Copiar tudo!", 2, 2, 0, kestu::RasterOp::CopyPen);  // warm the glyphs
  for (auto _ : state) {
    raster.DrawText(font, "Copiar tudo!", 2, 2, 0, kestu::RasterOp::CopyPen);
    benchmark::DoNotOptimize(raster.Pixels().data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_PrintTwelveCharacters);

void BM_MeasureTwelveCharacters(benchmark::State& state) {
  kestu::Raster raster(kControlWidth, kControlHeight);
  const kestu::FontSpec font{"MS Sans Serif", 11.0};
  for (auto _ : state) benchmark::DoNotOptimize(raster.MeasureText(font, "Copiar tudo!"));
}
BENCHMARK(BM_MeasureTwelveCharacters);

}  // namespace
