// LZW compression and expansion against the Unix compress program and gzip -1, on one corpus.
//
//   cmake --preset linux && cmake --build --preset linux -j2 --target bench_lzw &&
//   VEXTOOLS_BENCH_MB=100 build/linux/bin/bench_lzw --benchmark_counters_tabular=true
//
// The corpus (VEXTOOLS_BENCH_MB MiB, default 100) is generated: 1 MiB segments of text, of repetitive
// records and of random bytes in turn. Every case reports the speed in uncompressed bytes per second
// (bytes_per_second) and ratio = compressed size / corpus size.
//   LzwMemory/*    LZWCompressMemory / LZWDecompressMemory, output block included.
//   LzwCallback/*  LZWInit + LZW + LZWTerm (UNLZW, UNLZWTerm), one callback call per byte, the callbacks
//                  reading from memory and appending to a reserved vector. callbacks-only makes the
//                  same callback calls as expand without decoding: the floor of that interface.
//   Program/*      the external program as a child process reading a temporary file of the corpus (or
//                  of its compressed form) and writing another, both in the page cache. Its time (the
//                  "Time" column and bytes_per_second) is the child's CPU time, user + system, as
//                  reported by wait4, start-up included; wall_ms is its wall time from spawn to exit.
// The in-process cases' bytes_per_second is per CPU second too (Google Benchmark's default), so the
// figures compare like with like on a busy machine; their "Time" column is wall time.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "vextools/lzw.h"

extern char** environ;

namespace {

using Bytes = std::vector<std::uint8_t>;
namespace fs = std::filesystem;

std::size_t CorpusBytes() {
  const char* mb = std::getenv("VEXTOOLS_BENCH_MB");
  const long value = mb ? std::atol(mb) : 100;
  return static_cast<std::size_t>(value > 0 ? value : 100) << 20;
}

void AppendText(Bytes& out, std::size_t n, std::mt19937& random) {
  static const char* words[] = {"the", "map", "layer", "river", "road", "of", "and", "north", "border", "city",
                                "scale", "legend", "symbol", "grid", "projection", "survey", "contour", "a",
                                "elevation", "boundary", "forest", "lake", "station", "railway", "bridge"};
  const std::size_t end = out.size() + n;
  while (out.size() < end) {
    const char* w = words[random() % (sizeof words / sizeof *words)];
    out.insert(out.end(), w, w + std::strlen(w));
    const unsigned r = random() % 12;
    out.push_back(r == 0 ? '.' : r == 1 ? ',' : ' ');
    if (r == 0 && random() % 4 == 0) out.push_back('\n');
  }
  out.resize(end);
}

void AppendRecords(Bytes& out, std::size_t n, std::uint32_t& id) {
  const std::size_t end = out.size() + n;
  char line[160];
  while (out.size() < end) {
    const int length = std::snprintf(line, sizeof line, "%u;ROAD;%u;%u;2026-11-%02u;asphalt;%s\r\n", id,
                                     100000 + id * 7 % 5000, id % 97, 1 + id % 28, id % 3 ? "open" : "closed");
    out.insert(out.end(), line, line + length);
    ++id;
  }
  out.resize(end);
}

const Bytes& Corpus() {
  static const Bytes corpus = [] {
    Bytes out;
    const std::size_t total = CorpusBytes();
    out.reserve(total);
    std::mt19937 random(2026);
    std::uint32_t id = 1;
    for (int segment = 0; out.size() < total; ++segment) {
      const std::size_t n = std::min<std::size_t>(1 << 20, total - out.size());
      if (segment % 3 == 0) AppendText(out, n, random);
      else if (segment % 3 == 1) AppendRecords(out, n, id);
      else for (std::size_t i = 0; i < n; ++i) out.push_back(static_cast<std::uint8_t>(random()));
    }
    return out;
  }();
  return corpus;
}

Bytes TakeBlock(LZWMEMBLOCK& block) {
  auto handle = reinterpret_cast<HGLOBAL>(block.hOut);
  auto* data = static_cast<const std::uint8_t*>(GlobalLock(handle));
  Bytes out(data, data + block.dwOutLength);
  GlobalUnlock(handle);
  GlobalUnlock(handle);
  GlobalFree(handle);
  return out;
}

const Bytes& Packed() {
  static const Bytes packed = [] {
    const Bytes& corpus = Corpus();
    LZWMEMBLOCK block{static_cast<std::uint32_t>(corpus.size()), reinterpret_cast<std::intptr_t>(corpus.data()), 0, 0};
    if (LZWCompressMemory(&block) != 1) std::abort();
    return TakeBlock(block);
  }();
  return packed;
}

void Report(benchmark::State& state, std::size_t packedSize) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * Corpus().size()));
  state.counters["ratio"] = static_cast<double>(packedSize) / static_cast<double>(Corpus().size());
}

void LzwMemoryCompress(benchmark::State& state) {
  const Bytes& corpus = Corpus();
  std::size_t packed = 0;
  for (auto _ : state) {
    LZWMEMBLOCK block{static_cast<std::uint32_t>(corpus.size()), reinterpret_cast<std::intptr_t>(corpus.data()), 0, 0};
    if (LZWCompressMemory(&block) != 1) state.SkipWithError("LZWCompressMemory failed");
    packed = block.dwOutLength;
    GlobalFree(reinterpret_cast<HGLOBAL>(block.hOut));
  }
  Report(state, packed);
}

void LzwMemoryExpand(benchmark::State& state) {
  const Bytes& packed = Packed();
  Corpus();
  for (auto _ : state) {
    LZWMEMBLOCK block{static_cast<std::uint32_t>(packed.size()), reinterpret_cast<std::intptr_t>(packed.data()), 0, 0};
    if (LZWDecompressMemory(&block) != 1) state.SkipWithError("LZWDecompressMemory failed");
    state.PauseTiming();
    if (TakeBlock(block) != Corpus()) state.SkipWithError("round trip differs");
    state.ResumeTiming();
  }
  Report(state, packed.size());
}

struct Pipe {
  const Bytes* input;
  std::size_t position;
  Bytes output;

  static std::int16_t Read(std::intptr_t user) {
    auto* p = reinterpret_cast<Pipe*>(user);
    return p->position < p->input->size() ? (*p->input)[p->position++] : -1;
  }
  static void Write(std::int16_t byte, std::intptr_t user) {
    reinterpret_cast<Pipe*>(user)->output.push_back(static_cast<std::uint8_t>(byte));
  }
};

void LzwCallbackCompress(benchmark::State& state) {
  Packed();
  Bytes last;
  for (auto _ : state) {
    Pipe pipe{&Corpus(), 0, {}};
    pipe.output.reserve(Corpus().size());
    HGLOBAL h = LZWInit(&Pipe::Read, &Pipe::Write, LZW_MODE_COMPRESS, reinterpret_cast<std::intptr_t>(&pipe));
    LZW(h);
    LZWTerm(h);
    last.swap(pipe.output);
  }
  if (last != Packed()) state.SkipWithError("callback stream differs from the memory call");
  Report(state, last.size());
}

void LzwCallbackExpand(benchmark::State& state) {
  Packed();
  Bytes last;
  for (auto _ : state) {
    Pipe pipe{&Packed(), 0, {}};
    pipe.output.reserve(Corpus().size());
    HGLOBAL h = LZWInit(&Pipe::Read, &Pipe::Write, LZW_MODE_DECOMPRESS, reinterpret_cast<std::intptr_t>(&pipe));
    UNLZW(h);
    UNLZWTerm(h);
    last.swap(pipe.output);
  }
  if (last != Corpus()) state.SkipWithError("round trip differs");
  Report(state, Packed().size());
}

// The callbacks alone, as LzwCallback/expand calls them (every compressed byte read, every corpus byte
// written, through function pointers), without any decoding: the floor of the callback interface.
void CallbacksOnly(benchmark::State& state) {
  Packed();
  LZWREADPROC volatile read = &Pipe::Read;
  LZWWRITEPROC volatile write = &Pipe::Write;
  for (auto _ : state) {
    Pipe in{&Packed(), 0, {}};
    Pipe out{&Corpus(), 0, {}};
    out.output.reserve(Corpus().size());
    LZWREADPROC r = read;
    LZWWRITEPROC w = write;
    while (r(reinterpret_cast<std::intptr_t>(&in)) >= 0) {
    }
    for (std::uint8_t byte : Corpus()) w(byte, reinterpret_cast<std::intptr_t>(&out));
    benchmark::DoNotOptimize(out.output.data());
  }
  Report(state, Packed().size());
}

// Temporary files of the corpus, removed at exit.
struct TempFiles {
  fs::path dir;
  TempFiles() {
    std::string pattern = (fs::temp_directory_path() / "bench_lzw.XXXXXX").string();
    if (!mkdtemp(pattern.data())) std::abort();
    dir = pattern;
    std::ofstream(dir / "corpus", std::ios::binary)
        .write(reinterpret_cast<const char*>(Corpus().data()), static_cast<std::streamsize>(Corpus().size()));
  }
  ~TempFiles() { fs::remove_all(dir); }
  fs::path operator/(const char* name) const { return dir / name; }
};

const TempFiles& Files() {
  static const TempFiles files;
  return files;
}

struct Times {
  double wall = -1;  // seconds from spawn to exit
  double cpu = -1;   // the child's user + system time
};

// Runs argv with stdin and stdout redirected to files.
Times Run(std::vector<std::string> args, const fs::path& in, const fs::path& out) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, in.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  std::vector<char*> argv;
  for (auto& a : args) argv.push_back(a.data());
  argv.push_back(nullptr);
  const auto start = std::chrono::steady_clock::now();
  pid_t pid = 0;
  const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) return {};
  int status = 0;
  rusage usage{};
  wait4(pid, &status, 0, &usage);
  Times times;
  times.wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  times.cpu = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
              static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
  // compress exits with 2 when its output is not smaller than its input; the output is still complete
  if (!WIFEXITED(status) || (WEXITSTATUS(status) != 0 && WEXITSTATUS(status) != 2)) return {};
  return times;
}

void Program(benchmark::State& state, const char* program, const char* packFlag, bool expand) {
  const TempFiles& files = Files();
  const fs::path packed = files / (std::string("packed-") + (packFlag + 1)).c_str();
  if (Run({program, "-c", packFlag}, files / "corpus", packed).cpu < 0) {
    state.SkipWithError("program failed");
    return;
  }
  double wall = 0;
  for (auto _ : state) {
    const Times times = expand ? Run({program, "-d", "-c"}, packed, files / "expanded")
                               : Run({program, "-c", packFlag}, files / "corpus", files / "again");
    if (times.cpu < 0) state.SkipWithError("program failed");
    state.SetIterationTime(times.cpu);
    wall += times.wall;
  }
  state.counters["wall_ms"] = wall * 1000 / static_cast<double>(state.iterations());
  if (expand && fs::file_size(files / "expanded") != Corpus().size()) state.SkipWithError("round trip differs");
  Report(state, fs::file_size(packed));
}

void CompressProgramPack(benchmark::State& state) { Program(state, "/usr/bin/compress", "-f", false); }
void CompressProgramExpand(benchmark::State& state) { Program(state, "/usr/bin/compress", "-f", true); }
void GzipFastPack(benchmark::State& state) { Program(state, "/usr/bin/gzip", "-1", false); }
void GzipFastExpand(benchmark::State& state) { Program(state, "/usr/bin/gzip", "-1", true); }

}  // namespace

BENCHMARK(LzwMemoryCompress)->Name("LzwMemory/compress")->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(LzwMemoryExpand)->Name("LzwMemory/expand")->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(LzwCallbackCompress)->Name("LzwCallback/compress")->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(LzwCallbackExpand)->Name("LzwCallback/expand")->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(CallbacksOnly)->Name("LzwCallback/callbacks-only")->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(CompressProgramPack)->Name("Program/compress")->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);
BENCHMARK(CompressProgramExpand)->Name("Program/uncompress")->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);
BENCHMARK(GzipFastPack)->Name("Program/gzip-1")->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);
BENCHMARK(GzipFastExpand)->Name("Program/gunzip")->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);

BENCHMARK_MAIN();
