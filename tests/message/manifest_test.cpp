#include "orvo/message/Manifest.h"

#include <memory>
#include <string>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/message/ManifestInt.h"

namespace orvo {
namespace {

using common::Buffer;
using common::UInt8;
using message::Manifest;
using message::ManifestInt;

Buffer bufferOf(const char* text) {
  Buffer buffer;
  buffer.setFrom(reinterpret_cast<const unsigned char*>(text), static_cast<int>(strlen(text)));
  return buffer;
}

std::string textOf(const Buffer& buffer) {
  return std::string(reinterpret_cast<const char*>(buffer.c_buf()), buffer.size());
}

TEST(ManifestTest, SettersSetTheirBits) {
  Manifest manifest(true);
  EXPECT_EQ(0, manifest.getHintMask());
  manifest.setSeqNum(42);
  EXPECT_EQ(Manifest::SeqFlag, manifest.getHintMask());
  manifest.setFiltered(3, 500);
  manifest.setItemGroup(bufferOf("g"));
  manifest.setPermissionData(bufferOf("p"));
  EXPECT_EQ(0x0F, manifest.getHintMask());
  EXPECT_EQ(42u, manifest.getSeqNum());
  EXPECT_EQ(3, manifest.getFilteredCount());
  EXPECT_EQ(500u, manifest.getFilteredTime());
}

TEST(ManifestTest, ManagedCopiesBuffersAndUnmanagedPointsAtThem) {
  Buffer group = bufferOf("GROUP");
  Manifest managed(true);
  Manifest unmanaged(false);
  managed.setItemGroup(group);
  unmanaged.setItemGroup(group);
  EXPECT_NE(&group, &managed.getItemGroup());
  EXPECT_EQ(&group, &unmanaged.getItemGroup());

  group = bufferOf("CHANGED");
  EXPECT_EQ("GROUP", textOf(managed.getItemGroup()));
  EXPECT_EQ("CHANGED", textOf(unmanaged.getItemGroup()));
}

TEST(ManifestTest, CopiesTakeOwnBuffersFromPointedOrOwnSources) {
  Buffer permission = bufferOf("PERM");
  Manifest unmanaged(false);
  unmanaged.setSeqNum(9);
  unmanaged.setFiltered(1, 2);
  unmanaged.setPermissionData(permission);
  unmanaged.setItemGroup(permission);

  Manifest constructed(unmanaged);
  Manifest assigned(false);
  Buffer stale = bufferOf("STALE");
  assigned.setPermissionData(stale);
  assigned = unmanaged;
  for (const Manifest* copy : {&constructed, &assigned}) {
    EXPECT_EQ(0x0F, copy->getHintMask());
    EXPECT_EQ(9u, copy->getSeqNum());
    EXPECT_EQ(1, copy->getFilteredCount());
    EXPECT_EQ(2u, copy->getFilteredTime());
    EXPECT_NE(&permission, &copy->getPermissionData());
    EXPECT_EQ("PERM", textOf(copy->getPermissionData()));
    EXPECT_EQ("PERM", textOf(copy->getItemGroup()));
  }
  std::unique_ptr<Manifest> clone(unmanaged.clone());
  EXPECT_EQ("PERM", textOf(clone->getItemGroup()));
}

TEST(ManifestTest, AssignmentKeepsAPointerOfAFieldTheSourceLacks) {
  Buffer mine = bufferOf("MINE");
  Manifest target(false);
  target.setItemGroup(mine);
  Manifest source(true);
  source.setSeqNum(1);
  target = source;
  EXPECT_EQ(Manifest::SeqFlag, target.getHintMask());
  EXPECT_EQ(&mine, &target.getItemGroup());
}

TEST(ManifestTest, ClearResetsEverythingButTheManagedFlag) {
  Buffer group = bufferOf("G");
  Manifest manifest(false);
  manifest.setSeqNum(5);
  manifest.setFiltered(6, 7);
  manifest.setItemGroup(group);
  manifest.clear();
  EXPECT_EQ(0, manifest.getHintMask());
  EXPECT_EQ(0u, manifest.getSeqNum());
  EXPECT_EQ(0, manifest.getFilteredCount());
  EXPECT_EQ(0u, manifest.getFilteredTime());
  EXPECT_NE(&group, &manifest.getItemGroup());
  EXPECT_EQ(0, manifest.getItemGroup().size());

  manifest.setItemGroup(group);  // still unmanaged
  EXPECT_EQ(&group, &manifest.getItemGroup());
}

TEST(ManifestIntTest, RawPointersAndViews) {
  ManifestInt manifest(true);
  EXPECT_EQ(nullptr, manifest.getItemGroupIntP());
  EXPECT_EQ(nullptr, manifest.getPermissionDataIntP());
  manifest.setItemGroup(bufferOf("OWN"));  // managed: copied, pointer untouched
  EXPECT_EQ(nullptr, manifest.getItemGroupIntP());

  const UInt8 bytes[] = {1, 2, 3};
  manifest.setPermissionDataInt(bytes, 3);
  ASSERT_NE(nullptr, manifest.getPermissionDataIntP());
  EXPECT_EQ(bytes, manifest.getPermissionDataIntP()->c_buf());
  EXPECT_EQ(3, manifest.getPermissionData().size());
  EXPECT_EQ(3, manifest.getPermissionData().capacity());
  EXPECT_FALSE(manifest.getPermissionData().isOwned());
  EXPECT_EQ(Manifest::ItemGroupFlag | Manifest::PermissionDataFlag, manifest.getHintMask());

  manifest.setItemGroupInt(bytes + 1, 2);
  EXPECT_EQ(bytes + 1, manifest.getItemGroup().c_buf());
}

TEST(ManifestIntTest, HintMaskIntOrsTheLowByte) {
  ManifestInt manifest(false);
  manifest.setSeqNum(1);
  manifest.setHintMaskInt(0x302);
  EXPECT_EQ(Manifest::SeqFlag | Manifest::FilteredFlag, manifest.getHintMask());
  Manifest& asManifest = manifest;
  EXPECT_EQ(&manifest, &ManifestInt::of(asManifest));
}

TEST(ManifestIntTest, CopyOfAViewOwnsItsBytes) {
  std::unique_ptr<UInt8[]> bytes(new UInt8[2]{7, 8});
  ManifestInt decoded(false);
  decoded.setItemGroupInt(bytes.get(), 2);
  Manifest copy(true);
  copy = decoded;
  bytes.reset();
  EXPECT_EQ(std::string("\x07\x08", 2), textOf(copy.getItemGroup()));
}

}  // namespace
}  // namespace orvo
