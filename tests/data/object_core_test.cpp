#include <cstring>
#include <string>

#include "Data/Impl/DataInt.h"
#include "gtest/gtest.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/RespStatus.h"
#include "orvo/data/DataType.h"
#include "orvo/data/NoData.h"

namespace orvo {
namespace {

using common::Buffer;
using common::Data;
using common::InvalidUsageException;
using common::Msg;
using common::RespStatus;
using common::UInt8;
using data::NoData;
using internal::DataInt;

// A data object of an arbitrary type code, to reach the dispatch failures.
class RawData : public Data {
 public:
  RawData(UInt8 type, bool managed) : Data(type, managed) { _ownsBuffer = managed; }
  void clear() override { DataInt::resetForEncode(this, this, getDataType()); }
};

// A message of an arbitrary message type.
class RawMsg : public Msg {
 public:
  explicit RawMsg(UInt8 msgType) : Msg(false) { _msgType = msgType; }
};

class FixedHandle : public common::Handle {
 public:
  FixedHandle(UInt8 major, UInt8 minor) : _major(major), _minor(minor) {}
  UInt8 getMajorVersion() const override { return _major; }
  UInt8 getMinorVersion() const override { return _minor; }

 private:
  UInt8 _major, _minor;
};

std::string failureOf(void (*f)(Data*), Data* d) {
  try {
    f(d);
  } catch (const InvalidUsageException& e) {
    return e.what();
  }
  return "no failure";
}

TEST(DataTest, BlanknessFollowsTheEncodedLength) {
  RawData d(data::FieldListEnum, true);
  EXPECT_TRUE(d.isBlank());
  unsigned char bytes[2] = {1, 2};
  d.setEncodedBuffer(Buffer(bytes, 2, 2, false));
  EXPECT_FALSE(d.isBlank());

  NoData none(true);
  none.setEncodedBuffer(Buffer(bytes, 2, 2, false));
  EXPECT_TRUE(none.isBlank());
  RawMsg empty(1);
  EXPECT_FALSE(empty.isBlank());
}

TEST(DataTest, ManagedCopiesAndUnmanagedViews) {
  unsigned char bytes[3] = {5, 6, 7};
  RawData managed(data::MapEnum, true);
  managed.setEncodedBuffer(Buffer(bytes, 3, 3, false));
  RawData view(data::MapEnum, false);
  view.setEncodedBuffer(Buffer(bytes, 3, 3, false));
  EXPECT_NE(bytes, managed.getEncodedBuffer().c_buf());
  EXPECT_EQ(bytes, view.getEncodedBuffer().c_buf());
  EXPECT_EQ(3, managed.getEncodedBuffer().size());
  EXPECT_FALSE(managed.getEncodedBuffer().isOwned());
  EXPECT_EQ(Data::EncodeStateEncoded, DataInt::encodeState(&managed));
}

TEST(DataTest, SetEncodedBufferKeepsTheDecodedFlagButSetEncodedLiteResetsIt) {
  unsigned char bytes[1] = {9};
  RawData d(data::SeriesEnum, false);
  DataInt::decoded(&d) = true;
  d.setEncodedBuffer(Buffer(bytes, 1, 1, false));
  EXPECT_TRUE(DataInt::decoded(&d));
  OwfBuffer lite{1, reinterpret_cast<char*>(bytes)};
  DataInt::setEncodedLite(&d, lite);
  EXPECT_FALSE(DataInt::decoded(&d));
  EXPECT_EQ(reinterpret_cast<char*>(bytes), DataInt::encodedData(&d).data);
}

TEST(DataTest, NewBytesAfterClearAreMeasuredByTheirLength) {
  char first[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  char second[3] = {9, 9, 9};
  RawData d(data::FieldListEnum, false);
  DataInt::setEncodedLite(&d, OwfBuffer{8, first});
  d.clear();  // binds the encode iterator to the viewed bytes
  DataInt::setEncodedLite(&d, OwfBuffer{3, second});
  EXPECT_EQ(3, d.getEncodedBuffer().size());
  d.clear();
  d.setEncodedBuffer(Buffer(reinterpret_cast<unsigned char*>(first), 8, 8, false));
  EXPECT_EQ(8, d.getEncodedBuffer().size());
  EXPECT_EQ(reinterpret_cast<unsigned char*>(first), d.getEncodedBuffer().c_buf());
}

TEST(DataTest, ManagedEntryDataIsCopied) {
  char bytes[4] = {1, 2, 3, 4};
  RawData d(data::SeriesEnum, true);
  DataInt::setEncodedLite(&d, OwfBuffer{4, bytes});
  EXPECT_NE(bytes, DataInt::encodedData(&d).data);
  EXPECT_TRUE(DataInt::ownsBuffer(&d));
  EXPECT_EQ(0, std::memcmp(bytes, DataInt::encodedData(&d).data, 4));
}

TEST(DataTest, VersionsFromNumbersReachTheIteratorsUnconditionally) {
  RawData d(data::FieldListEnum, false);
  d.setAssociatedMetaInfo(15, 1);
  EXPECT_EQ(15, d.getMajorVersion());
  EXPECT_EQ(15, DataInt::decodeIter(&d).majorVersion);
  EXPECT_EQ(1, DataInt::encodeIter(&d).minorVersion);
}

TEST(DataTest, VersionsFromAHandleReachTheIteratorsOnlyAtFourteen) {
  RawData d(data::FieldListEnum, false);
  d.setAssociatedMetaInfo(FixedHandle(15, 1));
  EXPECT_EQ(15, d.getMajorVersion());
  EXPECT_EQ(1, d.getMinorVersion());
  EXPECT_EQ(14, DataInt::decodeIter(&d).majorVersion);
  EXPECT_EQ(0, DataInt::encodeIter(&d).minorVersion);

  d.setAssociatedMetaInfo(FixedHandle(0, 9));  // unset handle: nothing changes
  EXPECT_EQ(15, d.getMajorVersion());

  RawData e(data::FieldListEnum, false);
  e.setAssociatedMetaInfo(FixedHandle(14, 3));
  EXPECT_EQ(3, DataInt::decodeIter(&e).minorVersion);
}

TEST(DataTest, ClearDropsTheVersionAndKeepsTheBuffer) {
  RawData d(data::FieldListEnum, true);
  DataInt::prepareForEncode(&d, 4096);
  char* buffer = DataInt::encodedData(&d).data;
  d.setAssociatedMetaInfo(14, 7);
  d.clear();
  EXPECT_EQ(0, d.getMinorVersion());
  EXPECT_EQ(buffer, DataInt::encodedData(&d).data);
  EXPECT_EQ(4096u, DataInt::capacity(&d));
  EXPECT_EQ(0u, DataInt::encodedData(&d).length);
  EXPECT_EQ(Data::EncodeStateNone, DataInt::encodeState(&d));
  EXPECT_EQ(buffer, DataInt::encodeIter(&d).curPos);
}

TEST(DataTest, PrepareForEncodeBindsOnceAndKeepsALargerBuffer) {
  RawData d(data::FieldListEnum, false);
  DataInt::prepareForEncode(&d, 4096);
  EXPECT_TRUE(DataInt::iterBound(&d));
  EXPECT_TRUE(DataInt::ownsBuffer(&d));
  EXPECT_EQ(Data::EncodeStateEncoding, DataInt::encodeState(&d));
  EXPECT_EQ(4096u, DataInt::encodedData(&d).length);
  OwfEncodeIterator& iter = DataInt::encodeIter(&d);
  EXPECT_EQ(DataInt::encodedData(&d).data + 4096, iter.endPos);
  char* buffer = DataInt::encodedData(&d).data;
  DataInt::prepareForEncode(&d, 100);
  EXPECT_EQ(buffer, DataInt::encodedData(&d).data);
  EXPECT_EQ(4096u, DataInt::encodedData(&d).length);
}

TEST(DataTest, GetEncodedBufferReportsWhatTheBoundIteratorWrote) {
  RawData d(data::FieldListEnum, false);
  DataInt::prepareForEncode(&d, 64);
  DataInt::encodeIter(&d).curPos += 10;
  EXPECT_EQ(10, d.getEncodedBuffer().size());
}

TEST(DataTest, ReallocateDoublesTheRootBufferAndKeepsTheBytes) {
  RawData root(data::FieldListEnum, false);
  DataInt::prepareForEncode(&root, 16);
  OwfEncodeIterator& iter = DataInt::encodeIter(&root);
  std::memcpy(iter.curPos, "0123456789", 10);
  iter.curPos += 10;
  DataInt::reallocateEncodeBuffer(&root, &iter);
  EXPECT_EQ(32u, DataInt::capacity(&root));
  EXPECT_EQ(32u, DataInt::encodedData(&root).length);
  EXPECT_EQ(0, std::memcmp("0123456789", DataInt::encodedData(&root).data, 10));
  EXPECT_EQ(10u, getEncodedLength(&iter));
  EXPECT_EQ(DataInt::encodedData(&root).data + 32, iter.endPos);
}

TEST(DataTest, RootIsFoundThroughTheChain) {
  RawData root(data::ElementListEnum, false), middle(data::FieldListEnum, false),
      leaf(data::FieldListEnum, false);
  DataInt::rootData(&middle) = &root;
  DataInt::rootData(&leaf) = &middle;
  EXPECT_EQ(&root, DataInt::findRoot(&leaf));
  EXPECT_EQ(&root, DataInt::findRoot(&root));
}

TEST(MorphTest, MorphingToNoDataFromTypeZeroGivesANoData) {
  NoData* slot = new NoData(true);
  DataInt::shallowMorph(slot, 0, 0);
  EXPECT_EQ(data::NoDataEnum, slot->getDataType());
  DataInt::shallowMorph(slot, data::NoDataEnum, 0);  // same class: only cleared
  EXPECT_EQ(data::NoDataEnum, slot->getDataType());
  delete slot;
}

TEST(MorphTest, DispatchFailuresNameTheirTypeInTheBracketForm) {
  RawData typeZero(0, false);
  EXPECT_EQ(
      "Attempt to destroy Data object of unknow dataType (0) in class [DataInt] in method "
      "['destroyDataObject']",
      failureOf(&DataInt::destroyDataObject, &typeZero));
  RawMsg post(Msg::PostMsgEnum);
  EXPECT_EQ(
      "Attempt to destroy Msg object of unknown MsgType (4) in class [DataInt] in method "
      "['destroyDataObject']",
      failureOf(&DataInt::destroyDataObject, &post));
  NoData slot(false);
  EXPECT_EQ("Unsupported functionality in class [FieldList] in method ['shallowMorph']",
            failureOf([](Data* d) { DataInt::shallowMorph(d, 200, 0); }, &slot));
  EXPECT_EQ(data::NoDataEnum, slot.getDataType());
}

TEST(NoDataTest, CloneAndClear) {
  NoData original(true);
  original.setIndicationMask(3);
  original.clear();
  EXPECT_EQ(0, original.getIndicationMask());
  NoData* copy = original.clone();
  EXPECT_EQ(data::NoDataEnum, copy->getDataType());
  EXPECT_EQ(sizeof(NoData), NoData::kMorphStorageBytes);
  delete copy;
}

TEST(RespStatusTest, DefaultsCopiesAndClear) {
  RespStatus status;
  EXPECT_EQ(RespStatus::UnspecifiedStreamState, status.getStreamState());
  EXPECT_EQ(RespStatus::Suspect, status.getDataState());
  status.setStreamState(RespStatus::Open);
  status.setDataState(RespStatus::Ok);
  status.setStatusCode(17);
  status.setStatusText(common::ORVO_String("All is well"));
  RespStatus copy(status);
  RespStatus assigned;
  assigned = status;
  assigned = assigned;
  status.clear();
  EXPECT_EQ(RespStatus::Suspect, status.getDataState());
  EXPECT_EQ(0, status.getStatusCode());
  EXPECT_TRUE(status.getStatusText().empty());
  for (const RespStatus* s : {&copy, &assigned}) {
    EXPECT_EQ(RespStatus::Open, s->getStreamState());
    EXPECT_EQ(RespStatus::Ok, s->getDataState());
    EXPECT_EQ(17, s->getStatusCode());
    EXPECT_EQ(s->getStatusText(), "All is well");
  }
}

}  // namespace
}  // namespace orvo
