// Reading delimited text: the FileTxt reader against a memchr line count and a std::getline reader,
// and GTFILE::fgets against stdio fgets, all over the same generated files in one run.
//
// Run (from the worktree, after cmake --preset linux && cmake --build --preset linux -j2):
//   VEXTOOLS_BENCH_MB=1024 build/linux/bin/bench_text_file --benchmark_min_time=1
//
// VEXTOOLS_BENCH_MB sets the size of each generated file (default 1024). Two files are generated once
// into a temporary directory, one with CR LF line ends and one with LF alone, lines of 20 to 200 bytes
// holding 8 tab-separated fields; they are removed when the program ends.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "vextools/binaryfile.h"
#include "vextools/streamfile.h"
#include "vextools/textfile.h"

namespace {

struct Files {
  std::filesystem::path dir;
  std::string crlf, lf;
  std::int64_t bytes = 0;

  Files() {
    const char* mb = std::getenv("VEXTOOLS_BENCH_MB");
    bytes = (mb && std::atoi(mb) > 0 ? std::atoll(mb) : 1024) * 1024 * 1024;
    dir = std::filesystem::temp_directory_path() / ("vextools-bench-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    std::filesystem::create_directories(dir);
    crlf = (dir / "crlf.txt").string();
    lf = (dir / "lf.txt").string();
    Generate();
  }
  ~Files() {
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
  }

  // The same lines in both files; only the line ends differ, so the LF file is a little shorter.
  void Generate() {
    std::ofstream out1(crlf, std::ios::binary), out2(lf, std::ios::binary);
    std::uint32_t seed = 12345;
    const auto next = [&seed] { return seed = seed * 1664525u + 1013904223u; };
    std::string chunk1, chunk2, line;
    std::int64_t written = 0;
    while (written < bytes) {
      const int length = 20 + static_cast<int>((next() >> 8) % 181);  // 20..200 bytes with its CR LF
      line.clear();
      const int text = length - 2 - 7;  // text bytes around the 7 tabs
      for (int field = 0; field < 8; ++field) {
        const int size = text / 8 + (field < text % 8 ? 1 : 0);
        for (int i = 0; i < size; ++i) line += static_cast<char>('0' + (next() >> 10) % 43);
        if (field < 7) line += '\t';
      }
      chunk1 += line + "\r\n";
      chunk2 += line + "\n";
      written += length;
      if (chunk1.size() > (1 << 22)) {
        out1.write(chunk1.data(), static_cast<std::streamsize>(chunk1.size()));
        out2.write(chunk2.data(), static_cast<std::streamsize>(chunk2.size()));
        chunk1.clear();
        chunk2.clear();
      }
    }
    out1.write(chunk1.data(), static_cast<std::streamsize>(chunk1.size()));
    out2.write(chunk2.data(), static_cast<std::streamsize>(chunk2.size()));
  }
};

Files& TheFiles() {
  static Files files;
  return files;
}

const std::string& FileOf(const benchmark::State& state) {
  return state.range(0) == 0 ? TheFiles().crlf : TheFiles().lf;
}

void SetBytes(benchmark::State& state, const std::string& name) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(std::filesystem::file_size(name)));
  state.SetLabel(state.range(0) == 0 ? "CRLF" : "LF");
}

// The peer of the index: count line feeds with memchr over 300000-byte blocks.
void MemchrCountLines(benchmark::State& state) {
  const std::string& name = FileOf(state);
  std::vector<char> block(300000);
  for (auto _ : state) {
    KVBinaryFile file(_SS<char>(name.c_str()), 0x21);
    std::int64_t lines = 0;
    for (std::int32_t got; (got = file.Read(block.data(), 300000)) > 0;) {
      const char* p = block.data();
      const char* end = p + got;
      while ((p = static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p))))) {
        ++lines;
        ++p;
      }
    }
    benchmark::DoNotOptimize(lines);
  }
  SetBytes(state, name);
}

void FileTxtIndex(benchmark::State& state) {
  const std::string& name = FileOf(state);
  for (auto _ : state) {
    void* file = FileTxtOpen(name.c_str());
    benchmark::DoNotOptimize(FileTxtMakeIndexLine(file));
    FileTxtClose(file);
  }
  SetBytes(state, name);
}

void FileTxtFieldWalk(benchmark::State& state) {
  const std::string& name = FileOf(state);
  for (auto _ : state) {
    void* file = FileTxtOpen(name.c_str());
    std::int64_t fields = 0, sizes = 0;
    while (tagFILELINE* line = FileTxtGetLine(file)) {
      char* field = nullptr;
      for (std::int32_t size; (size = FileTxtGetFieldData(file, line, &field)) > 0;) {
        ++fields;
        sizes += size + field[0];
      }
    }
    benchmark::DoNotOptimize(fields);
    benchmark::DoNotOptimize(sizes);
    FileTxtClose(file);
  }
  SetBytes(state, name);
}

// The peer of the field walk: std::getline and a split at the tabs into views.
void GetlineSplit(benchmark::State& state) {
  const std::string& name = FileOf(state);
  for (auto _ : state) {
    std::ifstream in(name, std::ios::binary);
    std::string line;
    std::vector<std::string_view> fields;
    std::int64_t count = 0, sizes = 0;
    while (std::getline(in, line)) {
      if (!line.empty() && line.back() == '\r') line.pop_back();
      fields.clear();
      std::string_view rest(line);
      for (;;) {
        const std::size_t tab = rest.find('\t');
        fields.push_back(rest.substr(0, tab));
        if (tab == std::string_view::npos) break;
        rest.remove_prefix(tab + 1);
      }
      for (std::string_view field : fields) sizes += static_cast<std::int64_t>(field.size()) + (field.empty() ? 0 : field[0]);
      count += static_cast<std::int64_t>(fields.size());
    }
    benchmark::DoNotOptimize(count);
    benchmark::DoNotOptimize(sizes);
  }
  SetBytes(state, name);
}

void GtfileFgets(benchmark::State& state) {
  const std::string& name = FileOf(state);
  std::vector<char> buffer(1024);
  for (auto _ : state) {
    GTFILE file;
    file.fopen(name.c_str(), 0x21);
    std::int64_t lines = 0;
    while (file.fgets(buffer.data(), 1023)) ++lines;
    benchmark::DoNotOptimize(lines);
  }
  SetBytes(state, name);
}

void StdioFgets(benchmark::State& state) {
  const std::string& name = FileOf(state);
  std::vector<char> buffer(1024);
  for (auto _ : state) {
    std::FILE* file = std::fopen(name.c_str(), "rb");
    std::int64_t lines = 0;
    while (std::fgets(buffer.data(), 1024, file)) ++lines;
    std::fclose(file);
    benchmark::DoNotOptimize(lines);
  }
  SetBytes(state, name);
}

// Argument 0: the CR LF file; 1: the LF file, read with the default "\r\n" separator.
BENCHMARK(MemchrCountLines)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(FileTxtIndex)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(GetlineSplit)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(FileTxtFieldWalk)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(StdioFgets)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(GtfileFgets)->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  TheFiles();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
