#include <memory>
#include <string>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListReadIterator.h"
#include "orvo/message/AttribInfo.h"

namespace orvo {
namespace {

using common::Buffer;
using common::InvalidUsageException;
using common::ORVO_String;
using data::DataBuffer;
using data::ElementList;
using data::FieldList;
using message::AttribInfo;

constexpr char kServiceIdAlreadySet[] =
    "The AttribInfo instance calling AttribInfo::setServiceID() method has ServiceID already set. "
    "Not allowed to set both the ServiceID and also serviceName.";
constexpr char kServiceNameAlreadySet[] =
    "The AttribInfo instance calling AttribInfo::setServiceID() method has Service name already "
    "set. Not allowed to set both the ServiceName and also serviceID.";
constexpr char kInvalidAttrib[] =
    "Data passed in method AttribInfo::setAttrib() has invalid data format.";

// Runs `call`, expecting a bad-value failure, and returns its text.
template <class Call>
std::string badValueTextOf(Call call) {
  try {
    call();
  } catch (const InvalidUsageException& failure) {
    EXPECT_EQ(2, failure.getStatus().getState());
    return failure.what();
  }
  ADD_FAILURE() << "no failure raised";
  return std::string();
}

const unsigned char kListBytes[] = {0x08, 0x00, 0x02, 0x00, 0x01, 0x01, 0x41, 0x00};

Buffer listBytes() { return Buffer(const_cast<unsigned char*>(kListBytes), 8, 8, false); }

std::string bytesOf(const Buffer& buffer) {
  return std::string(reinterpret_cast<const char*>(buffer.c_buf()), buffer.size());
}

TEST(AttribInfoTest, NewObjectIsEmptyWithDefaultNameTypeAndNoDataAttrib) {
  AttribInfo info(true);
  EXPECT_EQ(0, info.getHintMask());
  EXPECT_EQ(1, info.getNameType());
  EXPECT_EQ(0u, info.getServiceID());
  EXPECT_EQ(0, info.getID());
  EXPECT_EQ(0u, info.getDataMask());
  EXPECT_EQ(data::NoDataEnum, info.getAttrib().getDataType());
}

TEST(AttribInfoTest, EachSetterSetsItsOwnBit) {
  AttribInfo info(true);
  info.setDataMask(7);
  EXPECT_EQ(AttribInfo::DataMaskFlag, info.getHintMask());
  info.setName("ACME.X");
  info.setNameType(3);
  info.setID(-5);
  EXPECT_EQ(AttribInfo::DataMaskFlag | AttribInfo::NameFlag | AttribInfo::NameTypeFlag |
                AttribInfo::IDFlag,
            info.getHintMask());
  EXPECT_EQ(0x17, info.getHintMask());
  EXPECT_EQ("ACME.X", std::string(info.getName().c_str()));
  EXPECT_EQ(3, info.getNameType());
  EXPECT_EQ(-5, info.getID());
  EXPECT_EQ(7u, info.getDataMask());
}

TEST(AttribInfoTest, ServiceNameAndIdExcludeEachOther) {
  AttribInfo byName(true);
  byName.setServiceName("FEED");
  EXPECT_EQ(0x08, byName.getHintMask());
  EXPECT_EQ(kServiceNameAlreadySet, badValueTextOf([&] { byName.setServiceID(4); }));
  EXPECT_EQ(0x08, byName.getHintMask());
  EXPECT_EQ(0u, byName.getServiceID());
  byName.setServiceName("OTHER");  // the same kind may be replaced
  EXPECT_EQ("OTHER", std::string(byName.getServiceName().c_str()));

  AttribInfo byId(true);
  byId.setServiceID(4);
  EXPECT_EQ(0x40, byId.getHintMask());
  EXPECT_EQ(kServiceIdAlreadySet, badValueTextOf([&] { byId.setServiceName("FEED"); }));
  EXPECT_EQ(0x40, byId.getHintMask());
  EXPECT_TRUE(byId.getServiceName().empty());
  byId.setServiceID(9);
  EXPECT_EQ(9u, byId.getServiceID());
}

TEST(AttribInfoTest, DecodedObjectWithBothServiceBitsKeepsOnlyTheOneSetLast) {
  AttribInfo info(true);
  info.setServiceInt("FEED", 12, true);
  EXPECT_EQ(AttribInfo::ServiceNameFlag | AttribInfo::ServiceIDFlag, info.getHintMask());

  info.setServiceID(13);
  EXPECT_EQ(AttribInfo::ServiceIDFlag, info.getHintMask());
  // Only the bit of the excluded field goes, not its value.
  EXPECT_EQ("FEED", std::string(info.getServiceName().c_str()));

  AttribInfo other(true);
  other.setServiceInt("FEED", 12, true);
  other.setServiceName("NEXT");
  EXPECT_EQ(AttribInfo::ServiceNameFlag, other.getHintMask());
  EXPECT_EQ(12u, other.getServiceID());
}

TEST(AttribInfoTest, EmptyServiceNameSetsTheBitOnlyThroughThePublicSetter) {
  AttribInfo info(true);
  info.setServiceName("");
  EXPECT_EQ(AttribInfo::ServiceNameFlag, info.getHintMask());

  AttribInfo decoded(true);
  decoded.setServiceInt("", 3, false);
  EXPECT_EQ(0, decoded.getHintMask());
  EXPECT_EQ(0u, decoded.getServiceID());
}

TEST(AttribInfoTest, UnmanagedEmptyNameKeepsTheFormerName) {
  AttribInfo unmanaged(false);
  unmanaged.setName("FIRST");
  unmanaged.setName("");
  EXPECT_EQ("FIRST", std::string(unmanaged.getName().c_str()));
  EXPECT_EQ(AttribInfo::NameFlag, unmanaged.getHintMask());

  AttribInfo managed(true);
  managed.setName("FIRST");
  managed.setName("");
  EXPECT_TRUE(managed.getName().empty());
}

TEST(AttribInfoTest, PrimitiveValuesCannotBeAnAttrib) {
  AttribInfo info(true);
  DataBuffer number(true);
  number.setInt32(5);
  EXPECT_EQ(kInvalidAttrib, badValueTextOf([&] { info.setAttrib(number); }));
  EXPECT_EQ(0, info.getHintMask());
  EXPECT_EQ(data::NoDataEnum, info.getAttrib().getDataType());
}

TEST(AttribInfoTest, DataBufferHoldingAContainerTypeIsAccepted) {
  AttribInfo info(true);
  DataBuffer holder(true);
  holder.setDataBufferType(data::FieldListEnum);
  info.setAttrib(holder);
  EXPECT_EQ(AttribInfo::AttribFlag, info.getHintMask());
  EXPECT_EQ(data::FieldListEnum, info.getAttrib().getDataType());
}

TEST(AttribInfoTest, ManagedAttribIsACopyWithTheSourceVersion) {
  AttribInfo info(true);
  std::unique_ptr<FieldList> source(new FieldList(false));
  source->setEncodedBuffer(listBytes());
  source->setAssociatedMetaInfo(14, 7);
  info.setAttrib(*source);

  const common::Data& attrib = info.getAttrib();
  EXPECT_NE(source.get(), &attrib);
  source.reset();  // the copy must not depend on the source
  EXPECT_EQ(data::FieldListEnum, attrib.getDataType());
  EXPECT_EQ(bytesOf(listBytes()), bytesOf(attrib.getEncodedBuffer()));
  EXPECT_EQ(7, attrib.getMinorVersion());
}

TEST(AttribInfoTest, UnmanagedAttribIsTheCallersObject) {
  AttribInfo info(false);
  FieldList source(false);
  source.setEncodedBuffer(listBytes());
  info.setAttrib(source);
  EXPECT_EQ(&source, &info.getAttrib());
}

TEST(AttribInfoTest, ClearKeepsTheServiceIdValueAndTheAttribClass) {
  AttribInfo info(true);
  info.setServiceID(77);
  info.setName("X");
  info.setNameType(5);
  info.setID(3);
  info.setDataMask(9);
  ElementList source(false);
  source.setEncodedBuffer(listBytes());
  info.setAttrib(source);

  info.clear();
  EXPECT_EQ(0, info.getHintMask());
  EXPECT_EQ(77u, info.getServiceID());
  EXPECT_TRUE(info.getName().empty());
  EXPECT_EQ(1, info.getNameType());
  EXPECT_EQ(0, info.getID());
  EXPECT_EQ(0u, info.getDataMask());
  EXPECT_TRUE(info.getAttrib().isBlank());
  EXPECT_EQ(0, info.getAttrib().getEncodedBuffer().size());

  // After clear, the service name may be chosen instead.
  info.setServiceName("FEED");
  EXPECT_EQ(AttribInfo::ServiceNameFlag, info.getHintMask());
}

TEST(AttribInfoTest, AssignmentCopiesOnlyFlaggedFieldsButAlwaysTheDataMask) {
  AttribInfo source(true);
  source.setName("SRC");
  source.setServiceInt("", 21, true);
  source.setID(8);

  AttribInfo target(true);
  target.setNameType(6);
  target.setDataMask(1);
  target = source;
  EXPECT_EQ(source.getHintMask(), target.getHintMask());
  EXPECT_EQ("SRC", std::string(target.getName().c_str()));
  EXPECT_EQ(21u, target.getServiceID());
  EXPECT_EQ(8, target.getID());
  EXPECT_EQ(6, target.getNameType());  // NameTypeFlag clear in the source
  // The source has no DataMaskFlag, yet its data mask value replaces ours.
  EXPECT_EQ(0u, target.getDataMask());
}

TEST(AttribInfoTest, CopiesOwnTheirAttribEvenFromAnUnmanagedSource) {
  std::unique_ptr<FieldList> list(new FieldList(false));
  list->setEncodedBuffer(listBytes());
  AttribInfo unmanaged(false);
  unmanaged.setAttrib(*list);

  std::unique_ptr<AttribInfo> copy(unmanaged.clone());
  AttribInfo assigned(false);
  assigned = unmanaged;
  EXPECT_NE(list.get(), &copy->getAttrib());
  EXPECT_NE(list.get(), &assigned.getAttrib());
  EXPECT_EQ(data::FieldListEnum, copy->getAttrib().getDataType());
  EXPECT_EQ(AttribInfo::AttribFlag, copy->getHintMask());
  EXPECT_EQ(bytesOf(listBytes()), bytesOf(copy->getAttrib().getEncodedBuffer()));

  assigned = assigned;  // self-assignment changes nothing
  EXPECT_EQ(AttribInfo::AttribFlag, assigned.getHintMask());
}

TEST(AttribInfoTest, CloneOfManagedObjectSurvivesTheOriginal) {
  std::unique_ptr<AttribInfo> original(new AttribInfo(true));
  original->setName(ORVO_String("A.LONGER.ITEM.NAME.THAN.INLINE.TEXT"));
  original->setServiceName("FEED");
  FieldList list(false);
  list.setEncodedBuffer(listBytes());
  original->setAttrib(list);

  std::unique_ptr<AttribInfo> copy(original->clone());
  original.reset();
  EXPECT_EQ("A.LONGER.ITEM.NAME.THAN.INLINE.TEXT", std::string(copy->getName().c_str()));
  EXPECT_EQ("FEED", std::string(copy->getServiceName().c_str()));
  EXPECT_EQ(bytesOf(listBytes()), bytesOf(copy->getAttrib().getEncodedBuffer()));
}

}  // namespace
}  // namespace orvo

namespace orvo {
namespace message {
namespace {

// After clear() the storage must not keep a header decoded from the bytes it
// has just freed: reading it again sees an empty list.
TEST(AttribInfoClearTest, ReadingTheStorageAfterClearSeesNoEntries) {
  AttribInfo info(true);
  data::FieldList source(false);
  source.setEncodedBuffer(listBytes());
  info.setAttrib(source);
  const auto& stored = static_cast<const data::FieldList&>(info.getAttrib());
  data::FieldListReadIterator first;
  first.start(stored);  // decodes the header of the owned copy
  info.clear();
  data::FieldListReadIterator again;
  again.start(stored);
  EXPECT_TRUE(again.off());
  EXPECT_TRUE(stored.isBlank());
}

}  // namespace
}  // namespace message
}  // namespace orvo
