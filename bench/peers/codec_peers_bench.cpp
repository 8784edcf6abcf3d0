// The wire codec against protobuf and FlatBuffers on the same content: encode,
// and decode-and-read every value, of a 25-field update and of a 100-entry map
// of 10-field rows. Every side reuses its buffers and message objects across
// iterations. After the run a summary gives ns per message and the ratio
// orvo / peer per case.
//
// The content is the wire codec's own benchmark cases (bench/owire_cases.h)
// and every side encodes from those same objects. Before anything is timed,
// each side's bytes are decoded and compared value by value with the content,
// so a side that dropped or altered a value cannot win by it.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "bench/owire_cases.h"
#include "market_update.pb.h"
#include "market_update_generated.h"
#include "orvo/owire/owire.h"

namespace {

namespace fb = peers::fb;
namespace pb = peers::pb;
using owire_cases::Book;
using owire_cases::Field;
using owire_cases::Row;

// ---------------------------------------------------------------------------
// Content.

constexpr UInt32 kSeed = 1;
// The action owire_cases::encodeBook gives every map entry; the peers carry it
// too.
constexpr UInt8 kBookAction = 2;

const Row& updateContent() {
  static const Row row = owire_cases::makeUpdate(kSeed);
  return row;
}
const Book& bookContent() {
  static const Book book = owire_cases::makeBook(kSeed);
  return book;
}

// The dictionary a data model would consult: data type by field id.
const owire_cases::Dictionary& dictionary() {
  static const owire_cases::Dictionary dict = [] {
    owire_cases::Dictionary d;
    d.add(updateContent());
    for (const Row& row : bookContent().rows) d.add(row);
    return d;
  }();
  return dict;
}

// The peers' schemas name the fields, so they take the values by position:
// one letter per field kind, and where each run of a kind starts.
constexpr char kUpdateLayout[] = "RRRRRRRRRRUUUUIIIDDTTEESS";
enum UpdateAt {
  kReals = 0,
  kUInts = 10,
  kInts = 14,
  kDates = 17,
  kTimes = 19,
  kEnums = 21,
  kStrings = 23
};
constexpr char kBookRowLayout[] = "RRRRUUIDTS";
enum BookRowAt {
  kRowReals = 0,
  kRowUInts = 4,
  kRowInt = 6,
  kRowDate = 7,
  kRowTime = 8,
  kRowString = 9
};

char kindLetter(UInt8 kind) {
  switch (kind) {
    case owire_cases::kReal:
      return 'R';
    case owire_cases::kUInt:
      return 'U';
    case owire_cases::kInt:
      return 'I';
    case owire_cases::kDate:
      return 'D';
    case owire_cases::kTime:
      return 'T';
    case owire_cases::kEnum:
      return 'E';
    case owire_cases::kString:
      return 'S';
    default:
      return '?';
  }
}

std::string layoutOf(const Row& row) {
  std::string letters;
  for (const Field& f : row) letters += kindLetter(f.kind);
  return letters;
}

bool contentHasPeerLayout() {
  bool ok = layoutOf(updateContent()) == kUpdateLayout;
  const Book& book = bookContent();
  ok = ok && book.keys.size() == book.rows.size();
  for (const Row& row : book.rows) ok = ok && layoutOf(row) == kBookRowLayout;
  if (!ok)
    std::fprintf(stderr,
                 "bench/owire_cases.h content no longer has the layout the peer schemas "
                 "carry (%s, rows of %s)\n",
                 kUpdateLayout, kBookRowLayout);
  return ok;
}

// ---------------------------------------------------------------------------
// Sinks: what a reader hands every value to, in content order.

// Adds every value up, which keeps each read live for one add; the sum goes
// through DoNotOptimize once per message. A DoNotOptimize per value would put a
// compiler barrier between reads, and a multiplying checksum a serial chain of
// several cycles per value; both slow the inlined FlatBuffers accessors most
// and would flatter the wire codec.
struct SumSink {
  UInt64 sum = 0;
  void real(Int64 mantissa, UInt8 hint) { sum += static_cast<UInt64>(mantissa) + hint; }
  void unsignedValue(UInt64 v) { sum += v; }
  void signedValue(Int64 v) { sum += static_cast<UInt64>(v); }
  void date(UInt16 year, UInt8 month, UInt8 day) { sum += year + month + day; }
  void time(UInt8 hour, UInt8 minute, UInt8 second, UInt16 millisecond) {
    sum += hour + minute + second + millisecond;
  }
  void enumeration(UInt16 v) { sum += v; }
  void text(const char* data, std::size_t size) {
    sum += reinterpret_cast<std::uintptr_t>(data) + size;
  }
};

// Writes every value out as text, for comparing the sides with the content.
struct RecordSink {
  std::string out;
  void put(const char* kind, long long a, long long b = 0, long long c = 0, long long d = 0) {
    char line[96];
    std::snprintf(line, sizeof line, "%s %lld %lld %lld %lld\n", kind, a, b, c, d);
    out += line;
  }
  void real(Int64 mantissa, UInt8 hint) { put("real", mantissa, hint); }
  void unsignedValue(UInt64 v) { put("uint", static_cast<long long>(v)); }
  void signedValue(Int64 v) { put("int", v); }
  void date(UInt16 year, UInt8 month, UInt8 day) { put("date", year, month, day); }
  void time(UInt8 hour, UInt8 minute, UInt8 second, UInt16 millisecond) {
    put("time", hour, minute, second, millisecond);
  }
  void enumeration(UInt16 v) { put("enum", v); }
  void text(const char* data, std::size_t size) { out.append("text ").append(data, size) += '\n'; }
};

// The content as a reader should report it.
template <class Sink>
void visitField(const Field& f, Sink& sink) {
  switch (f.kind) {
    case owire_cases::kReal:
      sink.real(f.real.value, f.real.hint);
      break;
    case owire_cases::kUInt:
      sink.unsignedValue(f.u);
      break;
    case owire_cases::kInt:
      sink.signedValue(f.i);
      break;
    case owire_cases::kDate:
      sink.date(f.date.year, f.date.month, f.date.day);
      break;
    case owire_cases::kTime:
      sink.time(f.time.hour, f.time.minute, f.time.second, f.time.millisecond);
      break;
    case owire_cases::kEnum:
      sink.enumeration(f.e);
      break;
    case owire_cases::kString:
      sink.text(f.s.data(), f.s.size());
      break;
  }
}

template <class Sink>
void visitUpdate(const Row& row, Sink& sink) {
  for (const Field& f : row) visitField(f, sink);
}

template <class Sink>
void visitBook(const Book& book, Sink& sink) {
  for (std::size_t i = 0; i < book.rows.size(); ++i) {
    sink.unsignedValue(book.keys[i]);
    sink.unsignedValue(kBookAction);
    for (const Field& f : book.rows[i]) visitField(f, sink);
  }
}

// Encoded bytes; they stay valid until the side's next encode.
struct Bytes {
  const char* data;
  std::size_t size;
};

enum : std::size_t { kBufferSize = 64 * 1024 };

// ---------------------------------------------------------------------------
// The wire codec, driven as the data model drives it: encoding by the codec
// engineer's own case encoders; reading one codec call per entry and one per
// value, with the type from the dictionary.

class OrvoSide {
 public:
  static constexpr const char* kName = "orvo";

  OrvoSide() : out_(kBufferSize), dict_(dictionary()) {}

  Bytes encodeUpdate(const Row& row) {
    OwfEncodeIterator it;
    if (!startEncode(&it) || owire_cases::encodeRow(&it, row) != OWIRE_RET_SUCCESS)
      return {nullptr, 0};
    return {out_.data(), getEncodedLength(&it)};
  }

  Bytes encodeBook(const Book& book) {
    OwfEncodeIterator it;
    if (!startEncode(&it) || owire_cases::encodeBookBuilding(&it, book) != OWIRE_RET_SUCCESS)
      return {nullptr, 0};
    return {out_.data(), getEncodedLength(&it)};
  }

  template <class Sink>
  bool readUpdate(Bytes in, Sink& sink) const {
    OwfBuffer buffer{static_cast<UInt32>(in.size), const_cast<char*>(in.data)};
    OwfDecodeIterator it;
    return startDecode(&it, &buffer) && readFieldList(&it, sink);
  }

  template <class Sink>
  bool readBook(Bytes in, Sink& sink) const {
    OwfBuffer buffer{static_cast<UInt32>(in.size), const_cast<char*>(in.data)};
    OwfDecodeIterator it;
    if (!startDecode(&it, &buffer)) return false;
    OwfMap map;
    if (owireDecodeMap(&it, &map) != OWIRE_RET_SUCCESS ||
        map.keyPrimitiveType != owire_cases::kUInt)
      return false;
    OwfMapEntry entry;
    UInt64 key;
    int ret;
    while ((ret = owireDecodeMapEntry(&it, &entry, &key)) == OWIRE_RET_SUCCESS) {
      sink.unsignedValue(key);
      sink.unsignedValue(entry.action);
      if (!readFieldList(&it, sink)) return false;
    }
    return ret == OWIRE_RET_END_OF_CONTAINER;
  }

 private:
  bool startEncode(OwfEncodeIterator* it) {
    buffer_ = OwfBuffer{static_cast<UInt32>(out_.size()), out_.data()};
    clearEncodeIterator(it);
    return setEncodeIteratorBuffer(it, &buffer_) == 0 && setEncodeIteratorVersion(it, 14, 0) == 0;
  }
  static bool startDecode(OwfDecodeIterator* it, OwfBuffer* buffer) {
    clearDecodeIterator(it);
    return setDecodeIteratorBuffer(it, buffer) == 0 && setDecodeIteratorVersion(it, 14, 0) == 0;
  }

  template <class Sink>
  bool readFieldList(OwfDecodeIterator* it, Sink& sink) const {
    OwfFieldList list;
    if (owireDecodeFieldList(it, &list, nullptr) != OWIRE_RET_SUCCESS) return false;
    OwfFieldEntry entry;
    int ret;
    while ((ret = owireDecodeFieldEntry(it, &entry)) == OWIRE_RET_SUCCESS) {
      if (!readValue(it, dict_.type[entry.fieldId & 4095], sink)) return false;
    }
    return ret == OWIRE_RET_END_OF_CONTAINER;
  }

  template <class Sink>
  static bool readValue(OwfDecodeIterator* it, UInt8 type, Sink& sink) {
    switch (type) {
      case owire_cases::kReal: {
        OwfReal v;
        if (owireDecodeReal(it, &v) != OWIRE_RET_SUCCESS) return false;
        sink.real(v.value, v.hint);
        return true;
      }
      case owire_cases::kUInt: {
        UInt64 v;
        if (owireDecodeUInt(it, &v) != OWIRE_RET_SUCCESS) return false;
        sink.unsignedValue(v);
        return true;
      }
      case owire_cases::kInt: {
        Int64 v;
        if (owireDecodeInt(it, &v) != OWIRE_RET_SUCCESS) return false;
        sink.signedValue(v);
        return true;
      }
      case owire_cases::kDate: {
        OwfDate v;
        if (owireDecodeDate(it, &v) != OWIRE_RET_SUCCESS) return false;
        sink.date(v.year, v.month, v.day);
        return true;
      }
      case owire_cases::kTime: {
        OwfTime v;
        if (owireDecodeTime(it, &v) != OWIRE_RET_SUCCESS) return false;
        sink.time(v.hour, v.minute, v.second, v.millisecond);
        return true;
      }
      case owire_cases::kEnum: {
        UInt16 v;
        if (owireDecodeEnum(it, &v) != OWIRE_RET_SUCCESS) return false;
        sink.enumeration(v);
        return true;
      }
      case owire_cases::kString: {
        OwfBuffer v;
        if (owireDecodeBuffer(it, &v) != OWIRE_RET_SUCCESS) return false;
        sink.text(v.data, v.length);
        return true;
      }
      default:
        return false;
    }
  }

  std::vector<char> out_;
  OwfBuffer buffer_;
  const owire_cases::Dictionary& dict_;
};

// ---------------------------------------------------------------------------
// protobuf: reused message objects (Clear keeps their strings and rows) and a
// reused output array.

// Dates and times packed into one uint32 each; see market_update.proto.
UInt32 packDate(const OwfDate& d) { return UInt32{d.year} << 16 | UInt32{d.month} << 8 | d.day; }
UInt32 packTime(const OwfTime& t) {
  return UInt32{t.hour} << 22 | UInt32{t.minute} << 16 | UInt32{t.second} << 10 | t.millisecond;
}
template <class Sink>
void unpackDate(UInt32 v, Sink& sink) {
  sink.date(static_cast<UInt16>(v >> 16), static_cast<UInt8>(v >> 8), static_cast<UInt8>(v));
}
template <class Sink>
void unpackTime(UInt32 v, Sink& sink) {
  sink.time(static_cast<UInt8>(v >> 22), static_cast<UInt8>((v >> 16) & 0x3F),
            static_cast<UInt8>((v >> 10) & 0x3F), static_cast<UInt16>(v & 0x3FF));
}

class ProtobufSide {
 public:
  static constexpr const char* kName = "protobuf";

  ProtobufSide() : out_(kBufferSize) {}

  Bytes encodeUpdate(const Row& r) {
    pb::Update& m = update_;
    m.set_bid(r[kReals + 0].real.value);
    m.set_bid_hint(r[kReals + 0].real.hint);
    m.set_ask(r[kReals + 1].real.value);
    m.set_ask_hint(r[kReals + 1].real.hint);
    m.set_last(r[kReals + 2].real.value);
    m.set_last_hint(r[kReals + 2].real.hint);
    m.set_open(r[kReals + 3].real.value);
    m.set_open_hint(r[kReals + 3].real.hint);
    m.set_high(r[kReals + 4].real.value);
    m.set_high_hint(r[kReals + 4].real.hint);
    m.set_low(r[kReals + 5].real.value);
    m.set_low_hint(r[kReals + 5].real.hint);
    m.set_close(r[kReals + 6].real.value);
    m.set_close_hint(r[kReals + 6].real.hint);
    m.set_settle(r[kReals + 7].real.value);
    m.set_settle_hint(r[kReals + 7].real.hint);
    m.set_vwap(r[kReals + 8].real.value);
    m.set_vwap_hint(r[kReals + 8].real.hint);
    m.set_net_change(r[kReals + 9].real.value);
    m.set_net_change_hint(r[kReals + 9].real.hint);
    m.set_bid_size(r[kUInts + 0].u);
    m.set_ask_size(r[kUInts + 1].u);
    m.set_volume(r[kUInts + 2].u);
    m.set_trade_count(r[kUInts + 3].u);
    m.set_tick_change(r[kInts + 0].i);
    m.set_imbalance(r[kInts + 1].i);
    m.set_interest_change(r[kInts + 2].i);
    m.set_trade_date(packDate(r[kDates + 0].date));
    m.set_settle_date(packDate(r[kDates + 1].date));
    m.set_trade_time(packTime(r[kTimes + 0].time));
    m.set_quote_time(packTime(r[kTimes + 1].time));
    m.set_market_state(r[kEnums + 0].e);
    m.set_trade_flags(r[kEnums + 1].e);
    m.set_symbol(r[kStrings + 0].s);
    m.set_alt_symbol(r[kStrings + 1].s);
    return serialize(m);
  }

  Bytes encodeBook(const Book& book) {
    map_.Clear();
    for (std::size_t i = 0; i < book.rows.size(); ++i) {
      const Row& r = book.rows[i];
      pb::Row* m = map_.add_rows();
      m->set_key(book.keys[i]);
      m->set_action(kBookAction);
      m->set_price(r[kRowReals + 0].real.value);
      m->set_price_hint(r[kRowReals + 0].real.hint);
      m->set_average(r[kRowReals + 1].real.value);
      m->set_average_hint(r[kRowReals + 1].real.hint);
      m->set_change(r[kRowReals + 2].real.value);
      m->set_change_hint(r[kRowReals + 2].real.hint);
      m->set_spread(r[kRowReals + 3].real.value);
      m->set_spread_hint(r[kRowReals + 3].real.hint);
      m->set_quantity(r[kRowUInts + 0].u);
      m->set_order_count(r[kRowUInts + 1].u);
      m->set_delta(r[kRowInt].i);
      m->set_value_date(packDate(r[kRowDate].date));
      m->set_update_time(packTime(r[kRowTime].time));
      m->set_symbol(r[kRowString].s);
    }
    return serialize(map_);
  }

  template <class Sink>
  bool readUpdate(Bytes in, Sink& sink) {
    pb::Update& m = update_;
    if (!m.ParseFromArray(in.data, static_cast<int>(in.size))) return false;
    sink.real(m.bid(), static_cast<UInt8>(m.bid_hint()));
    sink.real(m.ask(), static_cast<UInt8>(m.ask_hint()));
    sink.real(m.last(), static_cast<UInt8>(m.last_hint()));
    sink.real(m.open(), static_cast<UInt8>(m.open_hint()));
    sink.real(m.high(), static_cast<UInt8>(m.high_hint()));
    sink.real(m.low(), static_cast<UInt8>(m.low_hint()));
    sink.real(m.close(), static_cast<UInt8>(m.close_hint()));
    sink.real(m.settle(), static_cast<UInt8>(m.settle_hint()));
    sink.real(m.vwap(), static_cast<UInt8>(m.vwap_hint()));
    sink.real(m.net_change(), static_cast<UInt8>(m.net_change_hint()));
    sink.unsignedValue(m.bid_size());
    sink.unsignedValue(m.ask_size());
    sink.unsignedValue(m.volume());
    sink.unsignedValue(m.trade_count());
    sink.signedValue(m.tick_change());
    sink.signedValue(m.imbalance());
    sink.signedValue(m.interest_change());
    unpackDate(m.trade_date(), sink);
    unpackDate(m.settle_date(), sink);
    unpackTime(m.trade_time(), sink);
    unpackTime(m.quote_time(), sink);
    sink.enumeration(static_cast<UInt16>(m.market_state()));
    sink.enumeration(static_cast<UInt16>(m.trade_flags()));
    sink.text(m.symbol().data(), m.symbol().size());
    sink.text(m.alt_symbol().data(), m.alt_symbol().size());
    return true;
  }

  template <class Sink>
  bool readBook(Bytes in, Sink& sink) {
    if (!map_.ParseFromArray(in.data, static_cast<int>(in.size))) return false;
    for (const pb::Row& m : map_.rows()) {
      sink.unsignedValue(m.key());
      sink.unsignedValue(m.action());
      sink.real(m.price(), static_cast<UInt8>(m.price_hint()));
      sink.real(m.average(), static_cast<UInt8>(m.average_hint()));
      sink.real(m.change(), static_cast<UInt8>(m.change_hint()));
      sink.real(m.spread(), static_cast<UInt8>(m.spread_hint()));
      sink.unsignedValue(m.quantity());
      sink.unsignedValue(m.order_count());
      sink.signedValue(m.delta());
      unpackDate(m.value_date(), sink);
      unpackTime(m.update_time(), sink);
      sink.text(m.symbol().data(), m.symbol().size());
    }
    return true;
  }

 private:
  Bytes serialize(const google::protobuf::MessageLite& m) {
    if (!m.SerializeToArray(out_.data(), static_cast<int>(out_.size()))) return {nullptr, 0};
    return {out_.data(), static_cast<std::size_t>(m.GetCachedSize())};
  }

  pb::Update update_;
  pb::RowMap map_;
  std::vector<char> out_;
};

// ---------------------------------------------------------------------------
// FlatBuffers: a reused builder (Clear keeps its memory). Reading runs the
// Verifier first, as any reader of bytes from the network must.

class FlatBuffersSide {
 public:
  static constexpr const char* kName = "flatbuffers";

  FlatBuffersSide() : builder_(kBufferSize) { rows_.reserve(128); }

  Bytes encodeUpdate(const Row& r) {
    builder_.Clear();
    const auto symbol = builder_.CreateString(r[kStrings + 0].s);
    const auto altSymbol = builder_.CreateString(r[kStrings + 1].s);
    fb::Real p[10];
    for (int i = 0; i < 10; ++i) p[i] = real(r[kReals + i]);
    const fb::Date d0 = date(r[kDates + 0]), d1 = date(r[kDates + 1]);
    const fb::Time t0 = time(r[kTimes + 0]), t1 = time(r[kTimes + 1]);
    builder_.Finish(fb::CreateUpdate(builder_, &p[0], &p[1], &p[2], &p[3], &p[4], &p[5], &p[6],
                                     &p[7], &p[8], &p[9], r[kUInts + 0].u, r[kUInts + 1].u,
                                     r[kUInts + 2].u, r[kUInts + 3].u, r[kInts + 0].i,
                                     r[kInts + 1].i, r[kInts + 2].i, &d0, &d1, &t0, &t1,
                                     r[kEnums + 0].e, r[kEnums + 1].e, symbol, altSymbol));
    return finished();
  }

  Bytes encodeBook(const Book& book) {
    builder_.Clear();
    rows_.clear();
    for (std::size_t i = 0; i < book.rows.size(); ++i) {
      const Row& r = book.rows[i];
      const auto symbol = builder_.CreateString(r[kRowString].s);
      const fb::Real price = real(r[kRowReals + 0]), average = real(r[kRowReals + 1]),
                     change = real(r[kRowReals + 2]), spread = real(r[kRowReals + 3]);
      const fb::Date d = date(r[kRowDate]);
      const fb::Time t = time(r[kRowTime]);
      rows_.push_back(fb::CreateRow(builder_, book.keys[i], kBookAction, &price, &average, &change,
                                    &spread, r[kRowUInts + 0].u, r[kRowUInts + 1].u, r[kRowInt].i,
                                    &d, &t, symbol));
    }
    builder_.Finish(fb::CreateRowMap(builder_, builder_.CreateVector(rows_)));
    return finished();
  }

  template <class Sink>
  bool readUpdate(Bytes in, Sink& sink) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(in.data);
    flatbuffers::Verifier verifier(bytes, in.size);
    if (!fb::VerifyUpdateBuffer(verifier)) return false;
    const fb::Update* m = fb::GetUpdate(bytes);
    return readReal(m->bid(), sink) && readReal(m->ask(), sink) && readReal(m->last(), sink) &&
           readReal(m->open(), sink) && readReal(m->high(), sink) && readReal(m->low(), sink) &&
           readReal(m->close(), sink) && readReal(m->settle(), sink) && readReal(m->vwap(), sink) &&
           readReal(m->net_change(), sink) && readUpdateScalars(m, sink) &&
           readDate(m->trade_date(), sink) && readDate(m->settle_date(), sink) &&
           readTime(m->trade_time(), sink) && readTime(m->quote_time(), sink) &&
           readUpdateTail(m, sink);
  }

  template <class Sink>
  bool readBook(Bytes in, Sink& sink) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(in.data);
    flatbuffers::Verifier verifier(bytes, in.size);
    if (!verifier.VerifyBuffer<fb::RowMap>(nullptr)) return false;
    const auto* rows = flatbuffers::GetRoot<fb::RowMap>(bytes)->rows();
    if (rows == nullptr) return false;
    for (const fb::Row* m : *rows) {
      sink.unsignedValue(m->key());
      sink.unsignedValue(m->action());
      if (!readReal(m->price(), sink) || !readReal(m->average(), sink) ||
          !readReal(m->change(), sink) || !readReal(m->spread(), sink))
        return false;
      sink.unsignedValue(m->quantity());
      sink.unsignedValue(m->order_count());
      sink.signedValue(m->delta());
      if (!readDate(m->value_date(), sink) || !readTime(m->update_time(), sink) ||
          !readText(m->symbol(), sink))
        return false;
    }
    return true;
  }

 private:
  static fb::Real real(const Field& f) { return fb::Real(f.real.value, f.real.hint); }
  static fb::Date date(const Field& f) { return fb::Date(f.date.year, f.date.month, f.date.day); }
  static fb::Time time(const Field& f) {
    return fb::Time(f.time.hour, f.time.minute, f.time.second, f.time.millisecond);
  }

  Bytes finished() const {
    return {reinterpret_cast<const char*>(builder_.GetBufferPointer()), builder_.GetSize()};
  }

  // Struct and string fields are absent (null) when the writer left them out.
  template <class Sink>
  static bool readReal(const fb::Real* r, Sink& sink) {
    if (r == nullptr) return false;
    sink.real(r->mantissa(), r->hint());
    return true;
  }
  template <class Sink>
  static bool readDate(const fb::Date* d, Sink& sink) {
    if (d == nullptr) return false;
    sink.date(d->year(), d->month(), d->day());
    return true;
  }
  template <class Sink>
  static bool readTime(const fb::Time* t, Sink& sink) {
    if (t == nullptr) return false;
    sink.time(t->hour(), t->minute(), t->second(), t->millisecond());
    return true;
  }
  template <class Sink>
  static bool readText(const flatbuffers::String* s, Sink& sink) {
    if (s == nullptr) return false;
    sink.text(s->c_str(), s->size());
    return true;
  }
  template <class Sink>
  static bool readUpdateScalars(const fb::Update* m, Sink& sink) {
    sink.unsignedValue(m->bid_size());
    sink.unsignedValue(m->ask_size());
    sink.unsignedValue(m->volume());
    sink.unsignedValue(m->trade_count());
    sink.signedValue(m->tick_change());
    sink.signedValue(m->imbalance());
    sink.signedValue(m->interest_change());
    return true;
  }
  template <class Sink>
  static bool readUpdateTail(const fb::Update* m, Sink& sink) {
    sink.enumeration(m->market_state());
    sink.enumeration(m->trade_flags());
    return readText(m->symbol(), sink) && readText(m->alt_symbol(), sink);
  }

  flatbuffers::FlatBufferBuilder builder_;
  std::vector<flatbuffers::Offset<fb::Row>> rows_;
};

// ---------------------------------------------------------------------------
// The two cases, as one interface over the sides.

struct UpdateCase {
  static constexpr const char* kName = "update";
  static const Row& content() { return updateContent(); }
  template <class Side>
  static Bytes encode(Side& side, const Row& content) {
    return side.encodeUpdate(content);
  }
  template <class Side, class Sink>
  static bool read(Side& side, Bytes in, Sink& sink) {
    return side.readUpdate(in, sink);
  }
  template <class Sink>
  static void expected(Sink& sink) {
    visitUpdate(updateContent(), sink);
  }
};

struct MapCase {
  static constexpr const char* kName = "map";
  static const Book& content() { return bookContent(); }
  template <class Side>
  static Bytes encode(Side& side, const Book& content) {
    return side.encodeBook(content);
  }
  template <class Side, class Sink>
  static bool read(Side& side, Bytes in, Sink& sink) {
    return side.readBook(in, sink);
  }
  template <class Sink>
  static void expected(Sink& sink) {
    visitBook(bookContent(), sink);
  }
};

// Bytes as they would arrive: a copy in a buffer of their own, 16-byte aligned
// like any allocation (the FlatBuffers Verifier checks alignment).
template <class Case, class Side>
std::vector<char> receivedBytes(Side& side) {
  const Bytes b = Case::encode(side, Case::content());
  return b.data ? std::vector<char>(b.data, b.data + b.size) : std::vector<char>();
}

template <class Case, class Side>
void BM_Encode(benchmark::State& state) {
  Side side;
  const auto& content = Case::content();
  std::size_t size = 0;
  for (auto _ : state) {
    const Bytes b = Case::encode(side, content);
    if (b.data == nullptr) {
      state.SkipWithError("encode failed");
      break;
    }
    size = b.size;
    benchmark::DoNotOptimize(b.data);
    benchmark::ClobberMemory();
  }
  state.counters["bytes"] = static_cast<double>(size);
}

template <class Case, class Side>
void BM_DecodeRead(benchmark::State& state) {
  Side side;
  const std::vector<char> wire = receivedBytes<Case>(side);
  const Bytes in{wire.data(), wire.size()};
  for (auto _ : state) {
    SumSink sink;
    benchmark::DoNotOptimize(in.data);
    if (!Case::read(side, in, sink)) {
      state.SkipWithError("decode failed");
      break;
    }
    benchmark::DoNotOptimize(sink.sum);
  }
  state.counters["bytes"] = static_cast<double>(wire.size());
}

// ---------------------------------------------------------------------------
// Checking that every side carries the content, and the summary.

template <class Case, class Side>
bool sideCarriesContent() {
  Side side;
  const std::vector<char> wire = receivedBytes<Case>(side);
  RecordSink expected, got;
  Case::expected(expected);
  const bool decoded = !wire.empty() && Case::read(side, Bytes{wire.data(), wire.size()}, got);
  if (decoded && got.out == expected.out) return true;
  std::fprintf(stderr, "%s %s: %s\n", Case::kName, Side::kName,
               decoded ? "decoded values differ from the content" : "encode or decode failed");
  return false;
}

template <class Case>
bool allSidesCarryContent() {
  // Evaluates all three so that each failure is reported.
  const bool orvo = sideCarriesContent<Case, OrvoSide>();
  const bool protobuf = sideCarriesContent<Case, ProtobufSide>();
  const bool flatbuffers = sideCarriesContent<Case, FlatBuffersSide>();
  return orvo && protobuf && flatbuffers;
}

std::string benchName(const char* caseName, const char* op, const char* side) {
  return std::string(caseName) + "/" + op + "/" + side;
}

template <class Case, class Side>
void registerSide() {
  benchmark::RegisterBenchmark(benchName(Case::kName, "encode", Side::kName).c_str(),
                               BM_Encode<Case, Side>)
      ->Unit(benchmark::kNanosecond);
  benchmark::RegisterBenchmark(benchName(Case::kName, "decode_read", Side::kName).c_str(),
                               BM_DecodeRead<Case, Side>)
      ->Unit(benchmark::kNanosecond);
}

template <class Case>
void registerCase() {
  registerSide<Case, OrvoSide>();
  registerSide<Case, ProtobufSide>();
  registerSide<Case, FlatBuffersSide>();
}

// Console output as usual (in colour on a terminal only: a reporter given to
// RunSpecifiedBenchmarks does not see --benchmark_color), and each
// benchmark's CPU time per iteration, one message, kept for the summary. With
// repetitions the summary takes the median, from the median aggregate when
// only aggregates are reported.
class SummaryReporter : public benchmark::ConsoleReporter {
 public:
  SummaryReporter() : ConsoleReporter(isatty(fileno(stdout)) ? OO_ColorTabular : OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred) continue;
      const std::string& name = run.run_name.function_name;
      if (run.run_type == Run::RT_Iteration)
        times_[name].push_back(run.GetAdjustedCPUTime());
      else if (run.aggregate_name == "median")
        medians_[name] = run.GetAdjustedCPUTime();
    }
    ConsoleReporter::ReportRuns(runs);
  }

  // NaN when the benchmark did not run (filtered out or failed).
  double nsPerMessage(const std::string& name) const {
    const auto median = medians_.find(name);
    if (median != medians_.end()) return median->second;
    const auto found = times_.find(name);
    if (found == times_.end() || found->second.empty()) return std::nan("");
    std::vector<double> t = found->second;
    std::sort(t.begin(), t.end());
    const std::size_t n = t.size();
    return n % 2 ? t[n / 2] : (t[n / 2 - 1] + t[n / 2]) / 2;
  }

 private:
  std::map<std::string, std::vector<double>> times_;
  std::map<std::string, double> medians_;
};

enum TargetResult { kMet, kMissed, kUnknown };

TargetResult below(double ratio, double limit) {
  if (std::isnan(ratio)) return kUnknown;
  return ratio < limit ? kMet : kMissed;
}
TargetResult atMost(double ratio, double limit) {
  if (std::isnan(ratio)) return kUnknown;
  return ratio <= limit ? kMet : kMissed;
}
const char* targetText(TargetResult r) {
  return r == kMet ? "met" : r == kMissed ? "MISSED" : "n/a";
}

// Targets: faster than protobuf in every case; decode-and-read within 1.5
// times FlatBuffers with its verifier.
constexpr double kProtobufLimit = 1.0;
constexpr double kFlatBuffersReadLimit = 1.5;

void printSummary(const SummaryReporter& r) {
  std::printf("\nns per message (CPU time, median of repetitions) and ratio orvo/peer\n");
  std::printf("%-18s %10s %10s %12s %12s %12s   %s\n", "case", "orvo", "protobuf", "flatbuffers",
              "orvo/pb", "orvo/fb", "targets");
  for (const char* caseName : {"update", "map"}) {
    for (const char* op : {"encode", "decode_read"}) {
      const double orvo = r.nsPerMessage(benchName(caseName, op, OrvoSide::kName));
      const double protobuf = r.nsPerMessage(benchName(caseName, op, ProtobufSide::kName));
      const double flat = r.nsPerMessage(benchName(caseName, op, FlatBuffersSide::kName));
      const double toProtobuf = orvo / protobuf, toFlat = orvo / flat;
      std::string targets = std::string("orvo<pb ") + targetText(below(toProtobuf, kProtobufLimit));
      if (std::string(op) == "decode_read")
        targets +=
            std::string(", orvo<=1.5fb ") + targetText(atMost(toFlat, kFlatBuffersReadLimit));
      const std::string label = std::string(caseName) + "/" + op;
      std::printf("%-18s %10.1f %10.1f %12.1f %12.2f %12.2f   %s\n", label.c_str(), orvo, protobuf,
                  flat, toProtobuf, toFlat, targets.c_str());
    }
  }
}

template <class Case>
void printSizeRow(OrvoSide& orvo, ProtobufSide& protobuf, FlatBuffersSide& flat) {
  const auto& content = Case::content();
  std::printf("%-18s %10zu %10zu %12zu\n", Case::kName, Case::encode(orvo, content).size,
              Case::encode(protobuf, content).size, Case::encode(flat, content).size);
}

void printSizes() {
  OrvoSide orvo;
  ProtobufSide protobuf;
  FlatBuffersSide flat;
  std::printf("\nencoded bytes per message\n%-18s %10s %10s %12s\n", "case", "orvo", "protobuf",
              "flatbuffers");
  printSizeRow<UpdateCase>(orvo, protobuf, flat);
  printSizeRow<MapCase>(orvo, protobuf, flat);
}

}  // namespace

int main(int argc, char** argv) {
  GOOGLE_PROTOBUF_VERIFY_VERSION;
  if (!contentHasPeerLayout()) return 1;
  const bool updateCarried = allSidesCarryContent<UpdateCase>();
  const bool mapCarried = allSidesCarryContent<MapCase>();
  if (!updateCarried || !mapCarried) return 1;
  registerCase<UpdateCase>();
  registerCase<MapCase>();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  SummaryReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  printSummary(reporter);
  printSizes();
  google::protobuf::ShutdownProtobufLibrary();
  return 0;
}
