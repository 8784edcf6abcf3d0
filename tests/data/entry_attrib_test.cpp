#include <cstdlib>
#include <string>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FieldListInt.h"
#include "entry_test_util.h"
#include "gtest/gtest.h"
#include "orvo/common/UseOrvoVerify.h"
#include "orvo/common/VerifyFailure.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/EntryAttrib.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListWriteIterator.h"
#include "orvo/data/NoData.h"
#include "orvo/data/WriteIteratorAttrib.h"

namespace orvo {
namespace {

using common::Data;
using common::UInt8;
using data::DataBuffer;
using data::EntryAttrib;
using data::FieldEntry;
using data::FieldList;
using data::NoData;
using internal::DataInt;
using testing::usageTextOf;

TEST(EntryAttribTest, EachEntryTypeAcceptsItsOwnKindsOfData) {
  FieldList list(false);
  NoData none(false);
  testing::AnyMsg msg;
  DataBuffer opaque(false), xml(false), integer(false);
  opaque.setDataBufferType(data::OpaqueEnum);
  xml.setDataBufferType(data::XmlEnum);
  integer.setInt(1);

  for (UInt8 type : {data::FieldEntryEnum, data::ElementEntryEnum}) {
    EntryAttrib attrib(type, false);
    EXPECT_TRUE(attrib.isValidEntryData(list));
    EXPECT_TRUE(attrib.isValidEntryData(none));
    EXPECT_TRUE(attrib.isValidEntryData(integer));
    EXPECT_FALSE(attrib.isValidEntryData(msg));
  }
  for (UInt8 type :
       {data::MapEntryEnum, data::VectorEntryEnum, data::FilterEntryEnum, data::SeriesEntryEnum}) {
    EntryAttrib attrib(type, false);
    EXPECT_TRUE(attrib.isValidEntryData(list));
    EXPECT_TRUE(attrib.isValidEntryData(opaque));
    EXPECT_FALSE(attrib.isValidEntryData(integer));
    EXPECT_FALSE(attrib.isValidEntryData(none));
    EXPECT_FALSE(attrib.isValidEntryData(msg));
  }
  EntryAttrib array(data::ArrayEntryEnum, false);
  EXPECT_TRUE(array.isValidEntryData(integer));
  EXPECT_FALSE(array.isValidEntryData(list));
  EXPECT_FALSE(array.isValidEntryData(xml));
  EntryAttrib unknown(0x10, false);
  EXPECT_FALSE(unknown.isValidEntryData(integer));
}

TEST(EntryAttribTest, TheSlotTakesTheClassOfEachWireType) {
  EntryAttrib attrib(data::FieldEntryEnum, false);
  EXPECT_EQ(data::NoDataEnum, attrib.slotType());
  EXPECT_EQ(data::NoDataEnum, attrib.slot().getDataType());
  attrib.prepareDataSlot(DataBuffer::Int32Enum);
  ASSERT_EQ(data::DataBufferEnum, attrib.slot().getDataType());
  EXPECT_EQ(data::IntEnum, testing::asValue(attrib.slot()).getDataBufferType());
  EXPECT_TRUE(attrib.slot().isBlank());
  attrib.prepareDataSlot(DataBuffer::Real32Enum);
  EXPECT_EQ(data::RealEnum, testing::asValue(attrib.slot()).getDataBufferType());

  attrib.prepareDataSlot(data::MsgEnum);
  EXPECT_EQ(data::DataBufferEnum, attrib.slot().getDataType());
  EXPECT_EQ(data::DataBufferEnum, attrib.slotType());

  attrib.prepareDataSlot(data::ElementListEnum);
  EXPECT_EQ(data::ElementListEnum, attrib.slot().getDataType());
  attrib.prepareDataSlot(data::FieldListEnum);
  EXPECT_EQ(data::FieldListEnum, attrib.slot().getDataType());
  const Data* slot = &attrib.slot();

  // An unmanaged entry keeps the slot's class over a clear, while the type
  // it records goes back to NoData.
  attrib.clear();
  EXPECT_EQ(data::NoDataEnum, attrib.slotType());
  EXPECT_EQ(data::FieldListEnum, attrib.slot().getDataType());
  attrib.prepareDataSlot(data::FieldListEnum);
  EXPECT_EQ(slot, &attrib.slot());
  EXPECT_EQ(data::FieldListEnum, attrib.slotType());

  EntryAttrib managed(data::FieldEntryEnum, true);
  managed.prepareDataSlot(data::FieldListEnum);
  managed.clear();
  EXPECT_EQ(data::NoDataEnum, managed.slot().getDataType());
}

TEST(EntryAttribTest, UnmanagedEntriesReferAndManagedOnesCopy) {
  DataBuffer source(true);
  source.setInt(41);
  EntryAttrib unmanaged(data::FieldEntryEnum, false);
  unmanaged.copyEntryData(source);
  EXPECT_EQ(&source, unmanaged.currentData());
  EXPECT_EQ(data::DataBufferEnum, unmanaged.slotType());

  EntryAttrib managed(data::FieldEntryEnum, true);
  managed.copyEntryData(source);
  EXPECT_EQ(&managed.slot(), managed.currentData());
  source.setInt(42);
  EXPECT_EQ(41, testing::asValue(managed.heldData()).getInt());

  // An encoded container is copied byte for byte.
  FieldList list(true);
  data::FieldListWriteIterator writer;
  writer.start(list, data::FieldListWriteIterator::StandardDataFlag);
  FieldEntry entry(false);
  entry.setFieldID(1);
  entry.setData(source);
  writer.bind(entry);
  writer.complete();
  managed.copyEntryData(list);
  ASSERT_EQ(data::FieldListEnum, managed.heldData().getDataType());
  const common::Buffer& copy = managed.heldData().getEncodedBuffer();
  EXPECT_NE(list.getEncodedBuffer().c_buf(), copy.c_buf());
  EXPECT_EQ(testing::textOf(list.getEncodedBuffer()), testing::textOf(copy));

  // A blank container gives an empty one of its class.
  data::ElementList blank(false);
  managed.copyEntryData(blank);
  EXPECT_EQ(data::ElementListEnum, managed.heldData().getDataType());
  EXPECT_TRUE(managed.heldData().isBlank());
}

// A managed entry cannot copy a container that is half-written; the
// integrity check reports it and the entry keeps what it had.
TEST(EntryAttribTest, AManagedEntryReportsAContainerThatIsNotEncoded) {
  setenv("ORVO_LOG_FILENAME", "/dev/null", 1);
  FieldList list(false);
  data::FieldListWriteIterator writer;
  writer.start(list, data::FieldListWriteIterator::StandardDataFlag);
  ASSERT_FALSE(list.isBlank());

  FieldEntry entry(true);
  common::setUseOrvoVerify(false);
  std::string report;
  try {
    entry.setData(list);
  } catch (const common::VerifyFailure& failure) {
    report = failure.what();
  }
  common::setUseOrvoVerify(true);
  EXPECT_NE(std::string::npos, report.find("ORVO_VERIFY( 0 ) failed")) << report;
  EXPECT_NE(std::string::npos,
            report.find("To deep copy entry data, it is required that entry data is pre-encoded"))
      << report;
  EXPECT_EQ(nullptr, internal::FieldListInt::attrib(entry).currentData());
}

TEST(WriteIteratorAttribTest, OnlyContainersCanBeTheParentOfANestedWrite) {
  FieldList nested(false);
  DataBuffer notAContainer(false);
  DataInt::rootData(&nested) = &notAContainer;
  DataInt::parentData(&nested) = &notAContainer;
  data::WriteIteratorAttrib attrib;
  EXPECT_TRUE(attrib.headerPending());
  attrib.setData(&nested);
  EXPECT_FALSE(attrib.attachToRoot());
  EXPECT_EQ(&DataInt::encodeIter(&notAContainer), attrib.encodeIter());
  EXPECT_EQ(
      "Unsupported functionality in class [WriteIteratorAttrib] in method [encodeParentComplete]",
      usageTextOf([&] { attrib.encodeParentComplete(); }));
  EXPECT_EQ(Data::EncodeStateEncoded, DataInt::encodeState(&nested));
}

// A data object of any type code, to stand as the parent of a nested write.
class AnyContainer : public Data {
 public:
  explicit AnyContainer(UInt8 type) : Data(type, false) {}
  void clear() override {}
};

// A nested list whose parent has no entry open: closing the parent's entry
// fails in the while form, named after the parent's iterator.
TEST(WriteIteratorAttribTest, ClosingTheParentEntryFailsWithTheParentsWords) {
  struct Case {
    UInt8 parentType;
    const char* text;
  };
  const std::string refused = owireRetCodeToString(OWIRE_RET_INVALID_ENCODE_STATE);
  const Case cases[] = {
      {data::FieldListEnum,
       " while completing encode for FieldList in class [FieldListWriteIterator] in method "
       "[encodeParentComplete]"},
      {data::ElementListEnum,
       " while completing encode for ElementList in class [ElementListWriteIterator] in method "
       "[encodeParentComplete]"},
      // A filter list's noun is "FieldList" too.
      {data::FilterListEnum,
       " while completing encode for FieldList in class [FilterListWriteIterator] in method "
       "[encodeParentComplete]"},
  };
  for (const Case& c : cases) {
    AnyContainer parent(c.parentType);
    FieldList nested(false);
    DataInt::rootData(&nested) = &parent;
    DataInt::parentData(&nested) = &parent;
    OwfEncodeIterator nothingOpen;
    clearEncodeIterator(&nothingOpen);
    data::WriteIteratorAttrib attrib;
    attrib.setData(&nested);
    attrib.setEncodeIter(&nothingOpen);
    EXPECT_EQ(refused + c.text, usageTextOf([&] { attrib.encodeParentComplete(); }));
  }
}

}  // namespace
}  // namespace orvo
