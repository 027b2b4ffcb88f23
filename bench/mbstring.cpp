// VexStrStr and VexFindString on long texts, against strstr and a naive loop, in a single-byte code
// page (1252) and in code page 932. The needle sits at the end of a 1 MB text.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "text/mbcs_core.h"
#include "vextools/mbstring.h"

namespace {

void UseCodePage(int code_page) {
  if (vex::text::Multibyte().code_page == static_cast<std::uint32_t>(code_page)) return;
  setenv("VEXTOOLS_ACP", std::to_string(code_page).c_str(), 1);
  vex::text::ReinitMultibyteTables();
}

// Words of letters (and, for 932, hiragana and katakana pairs), then the needle.
std::string MakeText(bool japanese, const std::string& needle) {
  std::mt19937 random(42);
  std::string text;
  while (text.size() < (1u << 20)) {
    const int letters = 2 + static_cast<int>(random() % 8);
    for (int i = 0; i < letters; ++i) {
      if (japanese && random() % 2) {
        text += static_cast<char>(random() % 2 ? 0x82 : 0x83);
        text += static_cast<char>(0x9F + random() % 0x50);
      } else {
        text += static_cast<char>('a' + random() % 26);
      }
    }
    text += ' ';
  }
  return text + needle;
}

const char* NaiveSearch(const char* haystack, const char* needle) {
  for (const char* start = haystack; *start; ++start) {
    const char* h = start;
    const char* n = needle;
    while (*n && *h == *n) ++h, ++n;
    if (!*n) return start;
  }
  return nullptr;
}

const std::string kNeedle = "needle";

template <typename Search>
void Run(benchmark::State& state, Search search) {
  const int code_page = static_cast<int>(state.range(0));
  UseCodePage(code_page);
  const std::string text = MakeText(code_page == 932, kNeedle);
  for (auto _ : state) benchmark::DoNotOptimize(search(text.c_str(), kNeedle.c_str()));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(text.size()));
}

void BM_VexStrStr(benchmark::State& state) { Run(state, VexStrStr); }
void BM_VexFindString(benchmark::State& state) { Run(state, VexFindString); }
void BM_strstr(benchmark::State& state) { Run(state, [](const char* h, const char* n) { return std::strstr(h, n); }); }
void BM_NaiveLoop(benchmark::State& state) { Run(state, NaiveSearch); }

BENCHMARK(BM_VexStrStr)->Arg(1252)->Arg(932);
BENCHMARK(BM_VexFindString)->Arg(1252)->Arg(932);
BENCHMARK(BM_strstr)->Arg(1252)->Arg(932);
BENCHMARK(BM_NaiveLoop)->Arg(1252)->Arg(932);

}  // namespace

BENCHMARK_MAIN();
