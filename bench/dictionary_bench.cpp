// Field dictionary loading and lookups.
//
// Loads a generated field dictionary of 20,000 lines and an enum type file of
// 2,000 tables, and reads the same two files line by line with fgets in the
// same run. The figure that matters is the ratio of the two, which each load
// benchmark reports as its counter x_fgets (from CPU time, which holds
// steadier than wall time on a shared machine). Then lookups by id, by name
// and of enumeration displays.
#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <map>
#include <string>
#include <vector>

#include "orvo/common/ORVO_String.h"
#include "orvo/odm/ODMFieldDictionary.h"
#include "orvo/odm/ODMFieldDictionaryInt.h"

namespace {

using orvo::common::ORVO_String;
using orvo::odm::ODMFieldDictionary;

constexpr int kFieldLines = 20000;
constexpr int kEnumTables = 2000;
constexpr int kFieldsPerTable = 2;
constexpr int kValuesPerTable = 8;

struct GeneratedFiles {
  std::string dir;
  std::string fields;
  std::string enums;
  std::vector<std::string> names;
  std::vector<int> ids;
  std::vector<int> enumeratedIds;
  std::map<int, std::string> idNames;
};

GeneratedFiles g_files;

const char* kTypes[][2] = {
    {"PRICE", "REAL64"}, {"INTEGER", "UINT64"}, {"ALPHANUMERIC", "ASCII_STRING"},
    {"DATE", "DATE"},    {"TIME", "TIME"},      {"NUMERIC", "DOUBLE"}};

const char* kRoots[] = {"BUY",   "SELL", "DEAL",  "OPEN", "HIGH", "LOW", "CLOSE", "VOL",
                        "TURN",  "YLD",  "SPRD",  "DISC", "CPN",  "MAT", "STRK",  "DELTA",
                        "GAMMA", "VEGA", "THETA", "RHO",  "IDX",  "FIX", "FWD",   "OUT",
                        "CTB",   "PAGE", "NEWS",  "STAT", "BOOK", "ORD", "QT",    "TRD",
                        "SETL",  "REF",  "MID",   "NAV",  "ACC",  "INT", "DIV",   "EPS"};
const char* kParts[] = {"PX",  "QTY", "TIME", "DATE", "CCY", "SRC", "FLAG", "COND", "VENUE",
                        "CNT", "AVG", "MAX",  "MIN",  "CHG", "PCT", "NET",  "GRS",  "ADJ",
                        "IND", "EST", "ACT",  "PRV",  "NXT", "LST", "FRST"};
constexpr int kChainLength = 20;

// Acronyms in the style of real dictionaries: a root, a part and the place
// in a ripple chain (BUY_PX_1 ripples to BUY_PX_2, and so on). Chains are
// written last member first, so that each line ripples to the one before.
std::string acronym(int i) {
  const int chain = i / kChainLength;
  const int roots = sizeof(kRoots) / sizeof(kRoots[0]);
  return std::string(kRoots[chain % roots]) + "_" + kParts[(chain / roots) % 25] + "_" +
         std::to_string(kChainLength - i % kChainLength);
}

// A field dictionary in the shape of a real one: a tag header, comment lines,
// aligned columns, ripple chains, one field in five enumerated and a tenth
// of the ids negative.
void writeFieldFile(GeneratedFiles& files) {
  std::FILE* out = std::fopen(files.fields.c_str(), "w");
  std::fprintf(out, "!tag Filename bench-fields.def\n!tag Type 1\n!tag Version 1.0\n");
  int lines = 3;
  for (int i = 0; lines < kFieldLines; ++i) {
    if (i % 50 == 0) {
      std::fprintf(out, "!\n");
      ++lines;
    }
    const int id = i % 10 == 9 ? -i : i + 1;
    const std::string name = acronym(i);
    const std::string ripple = i % kChainLength == 0 ? "NULL" : acronym(i - 1);
    if (i % 5 == 0) {
      std::fprintf(out, "%-16s \"GENERATED ENUM %d\"  %6d  %-16s ENUMERATED   3  ( 6 )  ENUM  1\n",
                   name.c_str(), i, id, "NULL");
      files.enumeratedIds.push_back(id);
    } else {
      const char* const* type = kTypes[i % 6];
      std::fprintf(out, "%-16s \"GENERATED FIELD %d\"  %6d  %-16s %-14s 17  %-13s 7\n",
                   name.c_str(), i, id, ripple.c_str(), type[0], type[1]);
    }
    files.names.push_back(name);
    files.ids.push_back(id);
    files.idNames[id] = name;
    ++lines;
  }
  std::fclose(out);
}

void writeEnumFile(GeneratedFiles& files) {
  std::FILE* out = std::fopen(files.enums.c_str(), "w");
  std::fprintf(out, "!tag Filename bench-enums.def\n!tag Type 2\n!tag RT_Version 1.0\n");
  std::size_t next = 0;
  for (int t = 0; t < kEnumTables; ++t) {
    std::fprintf(out, "!\n! ACRONYM    FID\n!\n");
    for (int f = 0; f < kFieldsPerTable; ++f) {
      const int id = files.enumeratedIds[next++ % files.enumeratedIds.size()];
      std::fprintf(out, "%-16s  %6d\n", files.idNames[id].c_str(), id);
    }
    std::fprintf(out, "!\n! VALUE   DISPLAY   MEANING\n!\n");
    for (int v = 0; v < kValuesPerTable; ++v) {
      if (v == 3) {
        std::fprintf(out, "  %5d   #%02X%02X%02X#   hex display\n", v, 'A' + t % 26, 'a' + v,
                     '0' + t % 10);
      } else {
        std::fprintf(out, "  %5d   \"VAL_%d_%d\"   meaning of value %d\n", v, t, v, v);
      }
    }
  }
  std::fclose(out);
}

struct ScratchFiles {
  ScratchFiles() {
    const char* tmp = getenv("TMPDIR");
    std::string pattern = std::string(tmp != nullptr ? tmp : "/tmp") + "/orvo-bench-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    if (mkdtemp(name.data()) == nullptr) std::abort();
    g_files.dir = name.data();
    g_files.fields = g_files.dir + "/bench-fields.def";
    g_files.enums = g_files.dir + "/bench-enums.def";
    writeFieldFile(g_files);
    writeEnumFile(g_files);
  }
  ~ScratchFiles() {
    unlink(g_files.fields.c_str());
    unlink(g_files.enums.c_str());
    rmdir(g_files.dir.c_str());
  }
};

const GeneratedFiles& files() {
  static ScratchFiles scratch;
  return g_files;
}

// CPU time of the process.
double cpuSeconds() { return double(std::clock()) / CLOCKS_PER_SEC; }

int fgetsLines(const std::string& path) {
  std::FILE* in = std::fopen(path.c_str(), "r");
  char line[255];
  int lines = 0;
  while (std::fgets(line, sizeof(line), in) != nullptr) ++lines;
  std::fclose(in);
  return lines;
}

// Mean CPU time of reading `path` with fgets.
double fgetsSeconds(const std::string& path) {
  constexpr int kRounds = 50;
  const double start = cpuSeconds();
  for (int i = 0; i < kRounds; ++i) benchmark::DoNotOptimize(fgetsLines(path));
  return (cpuSeconds() - start) / kRounds;
}

void reportAgainstFgets(benchmark::State& state, double loadSeconds, const std::string& path) {
  if (state.iterations() == 0) return;
  state.counters["x_fgets"] = loadSeconds / double(state.iterations()) / fgetsSeconds(path);
}

// A dictionary for the whole run, loaded once for the lookups.
ODMFieldDictionary& loadedDictionary() {
  static ODMFieldDictionary& d = []() -> ODMFieldDictionary& {
    ODMFieldDictionary& made = ODMFieldDictionary::create();
    made.readODMFieldDictionary(ORVO_String(files().fields.c_str()));
    made.readODMEnumTypeDef(ORVO_String(files().enums.c_str()));
    return made;
  }();
  return d;
}

// Into an empty dictionary: the definitions of the last round are cleared
// outside the timing.
void BM_LoadFieldDictionary(benchmark::State& state) {
  auto& d = static_cast<orvo::odm::ODMFieldDictionaryInt&>(ODMFieldDictionary::create());
  const ORVO_String path(files().fields.c_str());
  double seconds = 0;
  for (auto _ : state) {
    state.PauseTiming();
    d.clearFidDefs();
    state.ResumeTiming();
    const double start = cpuSeconds();
    d.readODMFieldDictionary(path);
    seconds += cpuSeconds() - start;
    benchmark::DoNotOptimize(d.size());
  }
  state.counters["lines"] = kFieldLines;
  reportAgainstFgets(state, seconds, files().fields);
  d.destroy();
}
BENCHMARK(BM_LoadFieldDictionary)->Unit(benchmark::kMillisecond);

// A reload: each read first deletes the definitions of the last one.
void BM_ReloadFieldDictionary(benchmark::State& state) {
  ODMFieldDictionary& d = ODMFieldDictionary::create();
  const ORVO_String path(files().fields.c_str());
  const double start = cpuSeconds();
  for (auto _ : state) {
    d.readODMFieldDictionary(path);
    benchmark::DoNotOptimize(d.size());
  }
  const double seconds = cpuSeconds() - start;
  state.counters["lines"] = kFieldLines;
  reportAgainstFgets(state, seconds, files().fields);
  d.destroy();
}
BENCHMARK(BM_ReloadFieldDictionary)->Unit(benchmark::kMillisecond);

void BM_FgetsFieldDictionary(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(fgetsLines(files().fields));
  state.counters["lines"] = kFieldLines;
}
BENCHMARK(BM_FgetsFieldDictionary)->Unit(benchmark::kMillisecond);

// With the field definitions loaded, so that every acronym is checked.
void BM_LoadEnumTypeDef(benchmark::State& state) {
  ODMFieldDictionary& d = ODMFieldDictionary::create();
  d.readODMFieldDictionary(ORVO_String(files().fields.c_str()));
  const ORVO_String path(files().enums.c_str());
  const double start = cpuSeconds();
  for (auto _ : state) {
    d.readODMEnumTypeDef(path);  // each read first deletes the last one's tables
    benchmark::DoNotOptimize(d.getEnumDesc());
  }
  const double seconds = cpuSeconds() - start;
  state.counters["tables"] = kEnumTables;
  reportAgainstFgets(state, seconds, files().enums);
  d.destroy();
}
BENCHMARK(BM_LoadEnumTypeDef)->Unit(benchmark::kMillisecond);

void BM_FgetsEnumTypeDef(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(fgetsLines(files().enums));
  state.counters["tables"] = kEnumTables;
}
BENCHMARK(BM_FgetsEnumTypeDef)->Unit(benchmark::kMillisecond);

void BM_LookupById(benchmark::State& state) {
  ODMFieldDictionary& d = loadedDictionary();
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(&d.getFidDef(files().ids[i]));
    if (++i == files().ids.size()) i = 0;
  }
}
BENCHMARK(BM_LookupById);

void BM_LookupByName(benchmark::State& state) {
  ODMFieldDictionary& d = loadedDictionary();
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(&d.getFidDef(files().names[i].c_str()));
    if (++i == files().names.size()) i = 0;
  }
}
BENCHMARK(BM_LookupByName);

void BM_DisplayValueFor(benchmark::State& state) {
  ODMFieldDictionary& d = loadedDictionary();
  std::size_t i = 0;
  int value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(&d.displayValueFor(files().enumeratedIds[i], value));
    if (++i == files().enumeratedIds.size()) i = 0;
    value = (value + 1) % kValuesPerTable;
  }
}
BENCHMARK(BM_DisplayValueFor);

}  // namespace

BENCHMARK_MAIN();
