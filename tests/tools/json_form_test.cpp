// The tool's JSON form: every container kind and primitive goes to bytes and
// back to the same JSON, and bad JSON is refused with the path of the fault.
#include <gtest/gtest.h>

#include <string>

#include "orvo/common/ORVO_String.h"
#include "orvo/odm/ODMFieldDictionary.h"
#include "tools/orvo/DataJson.h"
#include "tools/orvo/MsgFile.h"

namespace orvo {
namespace tool {
namespace {

// The bundled sample dictionary: standard field entries carry no type on the
// wire, so decoding them by name and type needs it.
const FieldNames& sampleNames() {
  static const odm::ODMFieldDictionary* dictionary = [] {
    odm::ODMFieldDictionary* d = &odm::ODMFieldDictionary::create();
    d->readODMFieldDictionary(common::ORVO_String(ORVO_SOURCE_DIR "/data/orvo-fields.def"));
    d->readODMEnumTypeDef(common::ORVO_String(ORVO_SOURCE_DIR "/data/orvo-enums.def"));
    return d;
  }();
  static const FieldNames names(dictionary);
  return names;
}

OwfBuffer view(const std::string& bytes) {
  return OwfBuffer{static_cast<UInt32>(bytes.size()), const_cast<char*>(bytes.data())};
}

std::string encoded(const Json& form, const char* type, const FieldNames& names = sampleNames()) {
  return encodeData(form, typeCode(Json(type), "type"), names, "value");
}

Json roundTrip(const Json& form, const char* type, const FieldNames& names = sampleNames()) {
  return decodeData(view(encoded(form, type, names)), typeCode(Json(type), "type"), names);
}

void expectRoundTrip(const char* type, const char* text) {
  const Json form = Json::parse(text);
  EXPECT_EQ(roundTrip(form, type), form) << type << " " << text;
}

TEST(JsonFormTest, PrimitivesKeepTheirValues) {
  const char* cases[][2] = {
      {"Int", "-9223372036854775808"},
      {"UInt", "18446744073709551615"},
      {"Double", "0.1"},
      {"Double", "\"NaN\""},
      {"Float", "\"-Inf\""},
      {"Real", "\"101.50\""},
      {"Real", "\"1 1/2\""},
      {"Real", "\"4200\""},
      {"Date", "\"07 MAR 2024\""},
      {"Time", "\"23:59:59.999\""},
      {"DateTime", "{\"date\":\"29 FEB 2024\",\"time\":\"09:30:15\"}"},
      {"Qos", "{\"timeliness\":3,\"rate\":3,\"timeInfo\":500,\"rateInfo\":20}"},
      {"State", "{\"stream\":1,\"data\":2,\"code\":3,\"text\":\"suspect\"}"},
      {"Enum", "65535"},
      {"AsciiString", "\"ALPHA.XA\""},
      {"Buffer", "{\"hex\":\"00ff10\"}"},
      {"Real", "null"},
      {"Date", "null"},
  };
  for (const auto& c : cases) expectRoundTrip(c[0], c[1]);
}

TEST(JsonFormTest, RealsThatHaveNoExactTextKeepMantissaAndHint) {
  // Hint 22 is a divisor of 1: its text reads back with another hint.
  const Json form = Json::parse(R"({"mantissa":7,"hint":22})");
  EXPECT_EQ(roundTrip(form, "Real"), form);
}

TEST(JsonFormTest, ListsWithTypedEntries) {
  expectRoundTrip("ElementList", R"({"info":{"elementListNum":4},"entries":[
      {"name":"ApplicationId","type":"AsciiString","value":"256"},
      {"name":"Position","type":"UInt","value":7},
      {"name":"Nested","type":"FieldList","value":{"entries":[
          {"fid":40,"name":"BUY_PX","type":"Real","value":"1.5"}]}}]})");
  expectRoundTrip("FieldList", R"({"info":{"dictionaryId":1,"fieldListNum":2},"entries":[]})");
}

TEST(JsonFormTest, FieldsUnknownToTheDictionaryTravelAsHex) {
  const Json form = Json::parse(R"({"entries":[{"fid":12,"type":"UInt","value":300}]})");
  const Json back = roundTrip(form, "FieldList");
  ASSERT_EQ(back["entries"].size(), 1u);
  const std::string value = encoded(Json(300), "UInt");
  EXPECT_EQ(back["entries"][0]["hex"], toHex(value.data(), value.size()));
  EXPECT_EQ(roundTrip(back, "FieldList"), back);
  // Without a dictionary even known ids travel as bytes, and come back the same.
  const std::string bytes =
      encoded(Json::parse(R"({"entries":[{"name":"BUY_QTY","value":"12.5"}]})"), "FieldList");
  const FieldNames none;
  const Json bare = decodeData(view(bytes), typeCode(Json("FieldList"), "t"), none);
  ASSERT_TRUE(bare["entries"][0].contains("hex"));
  EXPECT_EQ(encoded(bare, "FieldList", none), bytes);
}

TEST(JsonFormTest, MapWithSetDefinitionsSummaryAndDeletes) {
  expectRoundTrip("Map", R"({"keyType":"UInt","keyFieldId":3426,"perEntryPermData":true,
      "containerType":"ElementList",
      "setDefs":[{"setId":3,"entries":[{"name":"Px","type":"Real8RB"},{"name":"Qty","type":"UInt4"}]}],
      "summary":{"entries":[{"name":"Ccy","type":"Enum","value":392}]},
      "countHint":2,
      "entries":[
        {"action":"add","key":17,"permData":"0102",
         "value":{"setId":3,"setEntries":[{"name":"Px","value":"99.5"},{"name":"Qty","value":12}],
                  "entries":[{"name":"Side","type":"Enum","value":1}]}},
        {"action":"update","key":18,"value":{"entries":[]}},
        {"action":"delete","key":19}]})");
}

TEST(JsonFormTest, SeriesVectorFilterListAndArray) {
  expectRoundTrip("Series", R"({"containerType":"ElementList","entries":[
      {"value":{"entries":[{"name":"NAME","type":"AsciiString","value":"BUY_PX"}]}},
      {"value":{"entries":[{"name":"NAME","type":"AsciiString","value":"SELL_PX"}]}}]})");
  expectRoundTrip("Vector", R"({"sortable":true,"containerType":"Series","entries":[
      {"index":0,"action":"set","value":{"containerType":"NoData","entries":[]}},
      {"index":4,"action":"delete"}]})");
  expectRoundTrip("FilterList", R"({"containerType":"ElementList","countHint":2,"entries":[
      {"id":1,"action":"set","value":{"entries":[]}},
      {"id":2,"action":"update","type":"Map","permData":"aa",
       "value":{"keyType":"AsciiString","containerType":"NoData","entries":[]}},
      {"id":3,"action":"clear"}]})");
  expectRoundTrip("Array", R"({"itemType":"UInt","itemLength":2,"items":[1,700,65535]})");
  // An empty text is blank on the wire.
  expectRoundTrip("Array", R"({"itemType":"AsciiString","items":["a",null]})");
}

TEST(JsonFormTest, SixteenLevelsOfNesting) {
  // SYS_CHILD_LIST (-13) is a field list field of the sample dictionary.
  Json form = Json::parse(R"({"entries":[{"fid":1,"name":"PROD_KEY","type":"UInt","value":1}]})");
  for (int level = 1; level < 16; ++level) {
    form = Json{
        {"entries",
         Json::array({Json{
             {"fid", -13}, {"name", "SYS_CHILD_LIST"}, {"type", "FieldList"}, {"value", form}}})}};
  }
  EXPECT_EQ(roundTrip(form, "FieldList"), form);
}

TEST(JsonFormTest, MessagesOfEveryClassRoundTrip) {
  const char* messages[] = {
      R"({"class":"request","domain":6,"streamId":5,"priority":{"class":1,"count":2},
          "qos":{"timeliness":1,"rate":1},"worstQos":{"timeliness":2,"rate":2},"header":"0a0b",
          "flags":["streaming","pause"],"key":{"serviceId":1,"name":"A","filter":7}})",
      R"({"class":"refresh","domain":6,"streamId":5,"seqNum":3,
          "state":{"stream":1,"data":1,"code":0},"groupId":"","permData":"0102",
          "publisher":{"address":1,"id":2},"flags":["solicited"],
          "bodyType":"FieldList","body":{"entries":[]}})",
      R"({"class":"status","domain":1,"streamId":-1,"state":{"stream":4,"data":2,"code":9,"text":"x"},
          "otherFlags":32768})",
      R"({"class":"update","domain":6,"streamId":5,"updateType":2,"conflation":{"count":3,"time":40},
          "key":{"name":"B","attribType":"ElementList","attrib":{"entries":[]}}})",
      R"({"class":"close","domain":6,"streamId":5,"header":"ff"})",
      R"({"class":"ack","domain":6,"streamId":5,"ackId":77,"nakCode":2,"text":"denied"})",
      R"({"class":"generic","domain":6,"streamId":5,"secondarySeqNum":9,"flags":["messageComplete"],
          "bodyType":"Msg","body":{"class":"close","domain":6,"streamId":8}})",
      R"({"class":"post","domain":6,"streamId":5,"partNum":1,"postId":4,
          "publisher":{"address":16909060,"id":5},"flags":["postComplete","ack"]})",
  };
  const FieldNames none;
  for (const char* text : messages) {
    const Json form = Json::parse(text);
    const std::string bytes = encodeMessage(form, none, "message");
    const Json back = decodeMessage(
        OwfBuffer{static_cast<UInt32>(bytes.size()), const_cast<char*>(bytes.data())}, none);
    EXPECT_EQ(encodeMessage(back, none, "again"), bytes) << text;
    EXPECT_EQ(back["class"], form["class"]);
  }
}

TEST(JsonFormTest, BadFormsNameWhereTheyAreWrong) {
  const FieldNames none;
  auto errorOf = [&](const char* text) {
    try {
      encodeMessage(Json::parse(text), none, "m");
    } catch (const JsonFormError& e) {
      return std::string(e.what());
    }
    return std::string("accepted");
  };
  EXPECT_EQ(errorOf(R"({"domain":6})"), "m: member \"class\" is missing");
  EXPECT_EQ(errorOf(R"({"class":"close","key":{}})"), "m.key: a close has no key");
  EXPECT_EQ(errorOf(R"({"class":"update","updateType":300})"), "m.updateType: out of range");
  EXPECT_EQ(errorOf(R"({"class":"update","flags":["solicited"]})"),
            "m.flags: unknown flag \"solicited\" for a update");
  EXPECT_EQ(errorOf(R"({"class":"update","bodyType":"FieldList","body":{"entries":[{"fid":99}]}})"),
            "m.body.entries[0]: field 99 is not in the dictionary: give its \"type\"");
  EXPECT_EQ(errorOf(R"({"class":"update","bodyType":"Map","body":{"containerType":"FieldList",
            "keyType":"UInt","entries":[{"key":"x"}]}})"),
            "m.body.entries[0].key: an integer is expected");
  EXPECT_EQ(errorOf(R"({"class":"update","bodyType":"FieldList","body":{"setEntries":[]}})"),
            "m.body.setId: no set definition 0 is in force");
}

TEST(JsonFormTest, TruncatedBytesGiveAnErrorNotACrash) {
  const Json map = Json::parse(R"({"keyType":"UInt","containerType":"FieldList",
      "summary":{"entries":[{"name":"QUOTE_CCY","value":392}]},
      "entries":[{"action":"add","key":1,"value":{"entries":[{"name":"BUY_PX","value":"1.25"}]}}]})");
  const std::string bytes = encoded(map, "Map");
  for (std::size_t length = 1; length < bytes.size(); ++length) {
    const std::string cut = bytes.substr(0, length);
    const Json d = decodeData(view(cut), typeCode(Json("Map"), "t"), sampleNames());
    EXPECT_NE(d.dump().find("error"), std::string::npos) << length << " " << d.dump();
  }
  const char garbage[] = "\x01\x02\xff\xff\x00\x10garbage";
  EXPECT_TRUE(decodeMessage(view(std::string(garbage, sizeof garbage - 1)), sampleNames())
                  .contains("error"));
}

TEST(MsgFileTest, FramesSplitExactlyOrTheFileIsOneMessage) {
  const std::vector<std::string> two = {"abc", "de"};
  const std::string framed = joinMessages(two, Framing::kAuto);
  EXPECT_EQ(framed, std::string("\0\0\0\3abc\0\0\0\2de", 13));
  EXPECT_EQ(splitMessages(framed, Framing::kAuto), two);
  EXPECT_EQ(joinMessages({"abc"}, Framing::kAuto), "abc");
  EXPECT_EQ(splitMessages("abc", Framing::kAuto), std::vector<std::string>{"abc"});
  EXPECT_TRUE(splitMessages("abc", Framing::kFramed).empty());
  EXPECT_EQ(splitMessages(framed, Framing::kSingle), std::vector<std::string>{framed});
}

}  // namespace
}  // namespace tool
}  // namespace orvo
