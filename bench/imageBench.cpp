// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Decoding, encoding, opening and saving. The image is the shipped default image with all sixteen
// channels set: eight with CTCSS, eight with DCS tones, the fullest image that there is.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "app/programFolder.h"
#include "app/settingsStore.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "channels/toneCode.h"
#include "document/document.h"
#include "image/modIicDat.h"
#include "memview/modMemDat.h"
#include "program/modFileCmd.h"
#include "program/modStartUp.h"

namespace {

using namespace k520;

constexpr std::int32_t firstFrequency = 44'600'625;
constexpr std::int32_t spacing = 1'250;

void fillChannels() {
    auto& table = modChMem::state().ChInfo;
    for (int n = 1; n <= modChMem::state().ChNum; ++n) {
        auto& channel = table(n);
        channel.rxFre() = channel.txFre() = firstFrequency + n * spacing;
        channel.decodeTone = n % 2 == 0 ? "88.5" : "D023N";
        channel.encodeTone = n % 2 == 0 ? "D754I" : "254.1";
    }
    modChMem::SetConvIicDat();
}

void prepare() {
    static const bool done = [] {
        programFolder::state().own = K520_SHARE_DIR;
        settingsStore::state().writable = false;
        modStartUp::readSettings();
        modStartUp::prepareCore();
        modFileCmd::NewFileSol();
        modMemDat::SetGridMemDat();
        fillChannels();
        return true;
    }();
    benchmark::DoNotOptimize(done);
}

void decodeAndEncode(benchmark::State& state) {
    prepare();
    for (auto _ : state) {
        modChMem::ChInfoSaveSol(1);
        modChMem::SetConvIicDat();
    }
}
BENCHMARK(decodeAndEncode)->Unit(benchmark::kMicrosecond);

void decodeAndShow(benchmark::State& state) {
    prepare();
    for (auto _ : state) {
        modChMem::SoftDisplay();
    }
}
BENCHMARK(decodeAndShow)->Unit(benchmark::kMicrosecond);

void captureAndRestore(benchmark::State& state) {
    prepare();
    for (auto _ : state) {
        document::restore(document::capture());
    }
}
BENCHMARK(captureAndRestore)->Unit(benchmark::kMicrosecond);

class DataFile : public benchmark::Fixture {
  public:
    void SetUp(benchmark::State&) override {
        prepare();
        path_ = (std::filesystem::temp_directory_path() / "k520-bench.dat").string();
        modFileCmd::setCurrentFile(path_);
        modFileCmd::SaveDatFile();
    }
    void TearDown(benchmark::State&) override { std::filesystem::remove(path_); }

  protected:
    std::string path_;
};

BENCHMARK_DEFINE_F(DataFile, openAndShow)(benchmark::State& state) {
    for (auto _ : state) {
        modFileCmd::openDatFile(path_);
    }
}
BENCHMARK_REGISTER_F(DataFile, openAndShow)->Unit(benchmark::kMicrosecond);

// Mostly the disk's time: the bytes are on it when the procedure returns.
BENCHMARK_DEFINE_F(DataFile, save)(benchmark::State& state) {
    for (auto _ : state) {
        modFileCmd::SaveDatFile();
    }
}
BENCHMARK_REGISTER_F(DataFile, save)->Unit(benchmark::kMicrosecond);

void fillMemoryGrid(benchmark::State& state) {
    prepare();
    std::uint8_t value = 0;
    for (auto _ : state) {
        // Every byte changes, so every cell does.
        std::ranges::fill(modIicDat::IicDat().bytes(), ++value);
        modMemDat::TableFreDat();
    }
}
BENCHMARK(fillMemoryGrid)->Unit(benchmark::kMicrosecond);

void typeByte(benchmark::State& state) {
    prepare();
    bool other = false;
    for (auto _ : state) {
        other = !other;
        modMemDat::typeByte(1, 1, other ? "5A" : "A5");
    }
}
BENCHMARK(typeByte)->Unit(benchmark::kMicrosecond);

// All 65536 words; a fifth of them are tones.
void tonesBothWays(benchmark::State& state) {
    for (auto _ : state) {
        for (unsigned word = 0; word <= 0xFFFF; ++word) {
            const auto text = toneCode::toneText(static_cast<std::uint16_t>(word), "None");
            benchmark::DoNotOptimize(toneCode::toneWord(text, "None"));
        }
    }
    state.SetItemsProcessed(state.iterations() * 0x10000);
}
BENCHMARK(tonesBothWays)->Unit(benchmark::kMillisecond);

// 43 000 frequencies from 120 to 550 MHz, 10 kHz and 10 Hz apart: on and off both rasters.
void snapToRaster(benchmark::State& state) {
    for (auto _ : state) {
        for (std::int32_t f = 12'000'000; f < 55'000'000; f += 1'001) {
            benchmark::DoNotOptimize(frequency::snapToRaster(f));
        }
    }
}
BENCHMARK(snapToRaster)->Unit(benchmark::kMillisecond);

}  // namespace
