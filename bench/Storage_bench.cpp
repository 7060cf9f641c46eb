// 200 MiB written into a compound file and read back, as one stream and as streams of 1 MiB, beside
// a copy of a file of that size with plain reads and writes. All within the system's cache of
// files.
#include "platform/ole/OleRef.h"
#include "platform/ole/StorageFile.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;
constexpr std::size_t kPieces = 200;
constexpr DWORD kReadWrite = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

using Text = std::basic_string<OLECHAR>;
using Storage = zdm::OleRef<IStorage>;
using Stream = zdm::OleRef<IStream>;

std::filesystem::path PathOf(const char* name) {
  return std::filesystem::temp_directory_path() / name;
}

Text NameOf(std::size_t index) {
  Text name = OLESTR("s");
  for (const char digit : std::to_string(index)) name += static_cast<OLECHAR>(digit);
  return name;
}

const std::vector<char>& Piece() {
  static const std::vector<char> piece = [] {
    std::vector<char> bytes(kPiece);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 31);
    return bytes;
  }();
  return piece;
}

void WriteStreams(IStorage* root, std::size_t streams) {
  for (std::size_t i = 0; i < streams; ++i) {
    Stream stream;
    root->CreateStream(NameOf(i).c_str(), kReadWrite, 0, 0, stream.Out());
    for (std::size_t j = 0; j < kPieces / streams; ++j) {
      stream->Write(Piece().data(), static_cast<ULONG>(kPiece), nullptr);
    }
  }
}

std::size_t ReadStreams(IStorage* root, std::size_t streams, std::vector<char>& buffer) {
  std::size_t sum = 0;
  for (std::size_t i = 0; i < streams; ++i) {
    Stream stream;
    root->OpenStream(NameOf(i).c_str(), nullptr, STGM_SHARE_EXCLUSIVE, 0, stream.Out());
    ULONG read = 0;
    while (stream->Read(buffer.data(), static_cast<ULONG>(kPiece), &read) == S_OK && read != 0) {
      sum += read;
    }
  }
  return sum;
}

void BM_Storage_WriteAndRead(benchmark::State& state) {
  const auto path = PathOf("zdm-bench-storage");
  const std::string native = path.string();
  const Text name(native.begin(), native.end());
  const auto streams = static_cast<std::size_t>(state.range(0));
  std::vector<char> buffer(kPiece);
  for (auto _ : state) {
    std::filesystem::remove(path);
    Storage root;
    zdm::CreateStorage(name.c_str(), kReadWrite | STGM_CREATE, root.Out());
    WriteStreams(root.Get(), streams);
    root->Commit(STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE);
    root.Reset();
    zdm::OpenStorage(name.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, root.Out());
    if (ReadStreams(root.Get(), streams, buffer) != kPiece * kPieces) state.SkipWithError("short");
  }
  std::filesystem::remove(path);
}
BENCHMARK(BM_Storage_WriteAndRead)->Arg(1)->Arg(200)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_Storage_WriteAndRead_Plain(benchmark::State& state) {
  const auto source = PathOf("zdm-bench-source");
  const auto target = PathOf("zdm-bench-target");
  {
    std::ofstream file(source, std::ios::binary);
    for (std::size_t i = 0; i < kPieces; ++i) file.write(Piece().data(), kPiece);
  }
  std::vector<char> buffer(kPiece);
  for (auto _ : state) {
    std::filesystem::remove(target);
    std::FILE* from = std::fopen(source.string().c_str(), "rb");
    std::FILE* to = std::fopen(target.string().c_str(), "wb");
    std::setvbuf(from, nullptr, _IONBF, 0);
    std::setvbuf(to, nullptr, _IONBF, 0);
    while (const std::size_t read = std::fread(buffer.data(), 1, kPiece, from)) {
      std::fwrite(buffer.data(), 1, read, to);
    }
    std::fclose(from);
    std::fclose(to);
  }
  std::filesystem::remove(source);
  std::filesystem::remove(target);
}
BENCHMARK(BM_Storage_WriteAndRead_Plain)
    ->Arg(1)
    ->Arg(200)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
