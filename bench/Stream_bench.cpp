// Serializing 32-bit values one by one beside one copy of the same bytes.
#include "platform/core/CZStream.h"
#include "zdm/framework/ZRefPtr.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

namespace {

void BM_CZStream_WriteAndReadValues(benchmark::State& state) {
  const long count = state.range(0);
  for (auto _ : state) {
    IStream* below = nullptr;
    CreateStreamOnHGlobal(nullptr, TRUE, &below);
    const auto stream = zdm::MakeObject<IZStream, CZStream>();
    stream->AttachStream(below);
    below->Release();
    for (LONG i = 0; i < count; ++i) stream->Write(&i, sizeof(i));
    stream->Seek(0, STREAM_SEEK_SET);
    LONG sum = 0;
    for (long i = 0; i < count; ++i) {
      LONG value;
      stream->Read(&value, sizeof(value));
      sum ^= value;
    }
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(BM_CZStream_WriteAndReadValues)->Arg(10000000)->Unit(benchmark::kMillisecond);

void BM_CZStream_WriteAndReadValues_Plain(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  const std::vector<LONG> values(count, 1);
  for (auto _ : state) {
    const std::unique_ptr<LONG[]> written(new LONG[count]);
    std::memcpy(written.get(), values.data(), count * sizeof(LONG));
    benchmark::ClobberMemory();
    const std::unique_ptr<LONG[]> read(new LONG[count]);
    std::memcpy(read.get(), written.get(), count * sizeof(LONG));
    benchmark::DoNotOptimize(read.get());
  }
}
BENCHMARK(BM_CZStream_WriteAndReadValues_Plain)->Arg(10000000)->Unit(benchmark::kMillisecond);

}  // namespace
