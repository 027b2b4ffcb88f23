// cmake --preset linux && cmake --build --preset linux -j2 --target bench_containers && build/linux/bin/bench_containers
//
// Containers against their standard peers on the same data:
// - XPQUEUE (position tracking) against std::priority_queue (none): 10 million random AddValue then
//   RemoveHead; and a shortest-path run where XPQUEUE lowers keys with ChangeValue through the position
//   variables while std::priority_queue pushes duplicates and skips stale ones.
// - VEXGENERALINDEX::SortIndex / FindEntry on 1 million random two-field records against std::sort /
//   std::lower_bound with the same comparison (the same field kinds); SortIndex on 20,000 records
//   already in order (the first-entry pivot makes that quadratic) against 20,000 random ones.
// - VEXTOKENLIST::Get / Set of 100,000 tokens against a vector of tokens written / read the same way.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <queue>
#include <random>
#include <utility>
#include <vector>

#include "vextools/generalindex.h"
#include "vextools/pqueue.h"
#include "vextools/tokenlist.h"

namespace {

// ---------------------------------------------------------------- priority queue

constexpr int kQueueValues = 10'000'000;

const std::vector<std::int32_t>& QueueKeys() {
  static const std::vector<std::int32_t> keys = [] {
    std::mt19937 random(7);
    std::vector<std::int32_t> k(kQueueValues);
    for (auto& key : k) key = static_cast<std::int32_t>(random() >> 1);
    return k;
  }();
  return keys;
}

void XpqueueAddThenRemove(benchmark::State& state) {
  const auto& keys = QueueKeys();
  for (auto _ : state) {
    XPQUEUE queue(1000);
    for (int i = 0; i < kQueueValues; ++i) queue.AddValue(keys[i], i, nullptr);
    std::int32_t key;
    std::int32_t value;
    std::int64_t sum = 0;
    while (queue.RemoveHead(key, value) == 0) sum += value;
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(XpqueueAddThenRemove)->Unit(benchmark::kMillisecond)->Iterations(2);

void StdPriorityQueueAddThenRemove(benchmark::State& state) {
  const auto& keys = QueueKeys();
  using Cell = std::pair<std::int32_t, std::int32_t>;
  for (auto _ : state) {
    std::priority_queue<Cell, std::vector<Cell>, std::greater<Cell>> queue;
    for (int i = 0; i < kQueueValues; ++i) queue.emplace(keys[i], i);
    std::int64_t sum = 0;
    while (!queue.empty()) {
      sum += queue.top().second;
      queue.pop();
    }
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(StdPriorityQueueAddThenRemove)->Unit(benchmark::kMillisecond)->Iterations(2);

// A random directed graph in compressed rows: 1 million nodes, 8 edges each, weights 1 ... 1000.
struct Graph {
  std::vector<std::int32_t> first;
  std::vector<std::int32_t> target;
  std::vector<std::int32_t> weight;
};

const Graph& RoadGraph() {
  static const Graph graph = [] {
    constexpr int kNodes = 1'000'000;
    constexpr int kDegree = 8;
    std::mt19937 random(11);
    Graph g;
    g.first.resize(kNodes + 1);
    for (int n = 0; n <= kNodes; ++n) g.first[n] = n * kDegree;
    g.target.resize(std::size_t(kNodes) * kDegree);
    g.weight.resize(g.target.size());
    for (std::size_t e = 0; e < g.target.size(); ++e) {
      g.target[e] = static_cast<std::int32_t>(random() % kNodes);
      g.weight[e] = static_cast<std::int32_t>(random() % 1000 + 1);
    }
    return g;
  }();
  return graph;
}

constexpr std::int32_t kUnreached = 0x7FFFFFFF;

void XpqueueShortestPaths(benchmark::State& state) {
  const Graph& g = RoadGraph();
  const auto nodes = static_cast<std::int32_t>(g.first.size() - 1);
  std::int64_t total = 0;
  for (auto _ : state) {
    std::vector<std::int32_t> distance(nodes, kUnreached);
    std::vector<std::int32_t> position(nodes, 0);  // 0: not queued; -1: done
    XPQUEUE queue(100000);
    distance[0] = 0;
    queue.AddValue(0, 0, &position[0]);
    std::int32_t key;
    std::int32_t node;
    while (queue.RemoveHead(key, node) == 0) {
      position[node] = -1;
      for (std::int32_t e = g.first[node]; e < g.first[node + 1]; ++e) {
        const std::int32_t next = g.target[e];
        const std::int32_t through = key + g.weight[e];
        if (position[next] < 0 || through >= distance[next]) continue;
        distance[next] = through;
        if (position[next] > 0) queue.ChangeValue(position[next], through);
        else queue.AddValue(through, next, &position[next]);
      }
    }
    total = 0;
    for (std::int32_t d : distance) total += d == kUnreached ? 0 : d;
  }
  state.counters["checksum"] = static_cast<double>(total);
}
BENCHMARK(XpqueueShortestPaths)->Unit(benchmark::kMillisecond)->Iterations(3);

void StdPriorityQueueShortestPaths(benchmark::State& state) {
  const Graph& g = RoadGraph();
  const auto nodes = static_cast<std::int32_t>(g.first.size() - 1);
  using Cell = std::pair<std::int32_t, std::int32_t>;
  std::int64_t total = 0;
  for (auto _ : state) {
    std::vector<std::int32_t> distance(nodes, kUnreached);
    std::priority_queue<Cell, std::vector<Cell>, std::greater<Cell>> queue;
    distance[0] = 0;
    queue.emplace(0, 0);
    while (!queue.empty()) {
      const auto [key, node] = queue.top();
      queue.pop();
      if (key > distance[node]) continue;  // a stale duplicate
      for (std::int32_t e = g.first[node]; e < g.first[node + 1]; ++e) {
        const std::int32_t next = g.target[e];
        const std::int32_t through = key + g.weight[e];
        if (through >= distance[next]) continue;
        distance[next] = through;
        queue.emplace(through, next);
      }
    }
    total = 0;
    for (std::int32_t d : distance) total += d == kUnreached ? 0 : d;
  }
  state.counters["checksum"] = static_cast<double>(total);
}
BENCHMARK(StdPriorityQueueShortestPaths)->Unit(benchmark::kMillisecond)->Iterations(3);

// ---------------------------------------------------------------- general index

// Two signed 32-bit fields: a coarse key with many ties, then a fine one.
struct Records {
  std::vector<char> bytes;
  std::vector<char*> pointers;
};

Records MakeRecords(int count, bool sorted) {
  std::mt19937 random(3);
  std::vector<std::pair<std::int32_t, std::int32_t>> keys(count);
  for (auto& key : keys) key = {static_cast<std::int32_t>(random() % 1000), static_cast<std::int32_t>(random())};
  if (sorted) std::sort(keys.begin(), keys.end());
  Records records;
  records.bytes.resize(std::size_t(count) * 16);
  for (int i = 0; i < count; ++i) {
    char* r = records.bytes.data() + std::size_t(i) * 16;
    const std::int32_t parts[] = {4, keys[i].first, 4, keys[i].second};
    std::memcpy(r, parts, 16);
  }
  for (int i = 0; i < count; ++i) records.pointers.push_back(records.bytes.data() + std::size_t(i) * 16);
  return records;
}

KVFieldKindInfo& LongKind() {
  static KVFieldKindInfo kind(KVFIELDKIND_LONG);
  return kind;
}

void FillIndex(VEXGENERALINDEX& index, const Records& records) {
  tagINDEXFIELDINFO infos[] = {{0, &LongKind()}, {0, &LongKind()}};
  index.AddFields(2, infos);
  for (char* record : records.pointers) index.SetValueAtEntry(index.AddEntry(), reinterpret_cast<std::intptr_t>(record));
}

// The index's comparison, field by field through the same field kinds.
int CompareRecords(const char* a, const char* b, int fields) {
  for (int k = 0; k < fields; ++k) {
    std::int32_t la;
    std::int32_t lb;
    std::memcpy(&la, a, 4);
    std::memcpy(&lb, b, 4);
    if (const int order = LongKind().CompareValues(0, a + 4, la, 0, 0, b + 4, lb, 0, 0)) return order;
    a += 4 + la;
    b += 4 + lb;
  }
  return 0;
}

void IndexSort(benchmark::State& state) {
  const Records records = MakeRecords(static_cast<int>(state.range(0)), state.range(1) != 0);
  for (auto _ : state) {
    state.PauseTiming();
    VEXGENERALINDEX index;
    FillIndex(index, records);
    state.ResumeTiming();
    index.SortIndex();
  }
}
BENCHMARK(IndexSort)->ArgNames({"entries", "sorted"})->Args({1'000'000, 0})->Args({20'000, 0})->Args({20'000, 1})
    ->Unit(benchmark::kMillisecond)->Iterations(3);

void StdSortSameComparison(benchmark::State& state) {
  const Records records = MakeRecords(static_cast<int>(state.range(0)), state.range(1) != 0);
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<char*> order = records.pointers;
    state.ResumeTiming();
    std::sort(order.begin(), order.end(), [](const char* a, const char* b) { return CompareRecords(a, b, 2) < 0; });
    benchmark::DoNotOptimize(order.data());
  }
}
BENCHMARK(StdSortSameComparison)->ArgNames({"entries", "sorted"})->Args({1'000'000, 0})->Args({20'000, 1})
    ->Unit(benchmark::kMillisecond)->Iterations(3);

constexpr int kIndexEntries = 1'000'000;
constexpr int kLookups = 1'000'000;

// Every record looked up by both fields, in random order.
std::vector<char*> LookupKeys(const Records& records) {
  std::vector<char*> keys = records.pointers;
  std::shuffle(keys.begin(), keys.end(), std::mt19937(9));
  keys.resize(kLookups);
  return keys;
}

void IndexFindEntry(benchmark::State& state) {
  const Records records = MakeRecords(kIndexEntries, true);
  const std::vector<char*> keys = LookupKeys(records);
  VEXGENERALINDEX index;
  FillIndex(index, records);
  std::int64_t hits = 0;
  for (auto _ : state) {
    hits = 0;
    std::int32_t found;
    for (char* key : keys) hits += index.FindEntry(2, key, &found) ? found : 0;
  }
  state.counters["checksum"] = static_cast<double>(hits);
}
BENCHMARK(IndexFindEntry)->Unit(benchmark::kMillisecond)->Iterations(3);

void StdLowerBoundSameComparison(benchmark::State& state) {
  const Records records = MakeRecords(kIndexEntries, true);
  const std::vector<char*> keys = LookupKeys(records);
  std::int64_t hits = 0;
  for (auto _ : state) {
    hits = 0;
    for (char* key : keys) {
      auto it = std::lower_bound(records.pointers.begin(), records.pointers.end(), key,
                                 [](const char* entry, const char* k) { return CompareRecords(entry, k, 2) < 0; });
      if (it != records.pointers.end() && CompareRecords(*it, key, 2) == 0) hits += it - records.pointers.begin() + 1;
    }
  }
  state.counters["checksum"] = static_cast<double>(hits);
}
BENCHMARK(StdLowerBoundSameComparison)->Unit(benchmark::kMillisecond)->Iterations(3);

// ---------------------------------------------------------------- token list

constexpr int kTokens = 100'000;

struct PlainToken {
  std::int32_t type;
  std::vector<unsigned char> data;
};

std::vector<char> TokenImage() {
  std::mt19937 random(5);
  VEXTOKENLIST list;
  unsigned char data[64];
  for (auto& byte : data) byte = static_cast<unsigned char>(random());
  for (int i = 0; i < kTokens; ++i) list.AddToken(0, static_cast<std::int32_t>(random() % 16), random() % 64, data);
  std::vector<char> image(static_cast<std::size_t>(list.GetSize()));
  list.Get(static_cast<std::int32_t>(image.size()), image.data());
  return image;
}

void TokenListSet(benchmark::State& state) {
  std::vector<char> image = TokenImage();
  VEXTOKENLIST list;
  for (auto _ : state) benchmark::DoNotOptimize(list.Set(static_cast<std::int32_t>(image.size()), image.data()));
}
BENCHMARK(TokenListSet)->Unit(benchmark::kMillisecond);

void TokenListGet(benchmark::State& state) {
  std::vector<char> image = TokenImage();
  VEXTOKENLIST list;
  list.Set(static_cast<std::int32_t>(image.size()), image.data());
  std::vector<char> out(image.size());
  for (auto _ : state) benchmark::DoNotOptimize(list.Get(static_cast<std::int32_t>(out.size()), out.data()));
}
BENCHMARK(TokenListGet)->Unit(benchmark::kMillisecond);

// The peer's reader: the same image into a vector of plain tokens.
std::vector<PlainToken> ParsePlainTokens(const std::vector<char>& image) {
  std::vector<PlainToken> tokens;
  std::size_t p = 40;
  std::uint32_t count;
  std::memcpy(&count, image.data() + 4, 4);
  for (std::uint32_t i = 0; i < count && p + 6 <= image.size(); ++i) {
    PlainToken token;
    std::uint16_t size;
    std::memcpy(&token.type, image.data() + p, 4);
    std::memcpy(&size, image.data() + p + 4, 2);
    token.data.assign(image.data() + p + 6, image.data() + p + 6 + size);
    tokens.push_back(std::move(token));
    p += 6 + size;
  }
  return tokens;
}

void VectorOfTokensRead(benchmark::State& state) {
  const std::vector<char> image = TokenImage();
  for (auto _ : state) {
    std::vector<PlainToken> tokens = ParsePlainTokens(image);
    benchmark::DoNotOptimize(tokens.data());
  }
}
BENCHMARK(VectorOfTokensRead)->Unit(benchmark::kMillisecond);

void VectorOfTokensWrite(benchmark::State& state) {
  const std::vector<char> image = TokenImage();
  const std::vector<PlainToken> tokens = ParsePlainTokens(image);
  std::vector<char> out(image.size());
  for (auto _ : state) {
    std::memset(out.data(), 0, 40);
    char* p = out.data() + 40;
    for (const PlainToken& token : tokens) {
      const auto size = static_cast<std::uint16_t>(token.data.size());
      std::memcpy(p, &token.type, 4);
      std::memcpy(p + 4, &size, 2);
      std::memcpy(p + 6, token.data.data(), size);
      p += 6 + size;
    }
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(VectorOfTokensWrite)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
