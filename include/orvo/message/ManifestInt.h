// The translators' face of Manifest. It adds no fields: a message keeps its
// manifest as a ManifestInt, hands it out as a Manifest, and reaches the Int
// face again by of(). Raw pointers may be null, and the Int setters point at
// the caller's bytes without copying them.
#ifndef ORVO_MESSAGE_MANIFEST_INT_H_
#define ORVO_MESSAGE_MANIFEST_INT_H_

#include "orvo/common/Buffer.h"
#include "orvo/common/Types.h"
#include "orvo/message/Manifest.h"

namespace orvo {
namespace message {

class ManifestInt : public Manifest {
 public:
  explicit ManifestInt(bool managed) : Manifest(managed) {}
  ManifestInt(const Manifest& other) : Manifest(other) {}
  ManifestInt& operator=(const Manifest& other) {
    Manifest::operator=(other);
    return *this;
  }

  // Only for a Manifest that was built as a ManifestInt.
  static ManifestInt& of(Manifest& manifest) { return static_cast<ManifestInt&>(manifest); }
  static const ManifestInt& of(const Manifest& manifest) {
    return static_cast<const ManifestInt&>(manifest);
  }

  // ORs the low byte of `mask` into the hint mask.
  void setHintMaskInt(common::UInt32 mask);

  const common::Buffer* getItemGroupIntP() const { return _itemGroupP; }
  const common::Buffer* getPermissionDataIntP() const { return _permissionDataP; }

  // Views `length` bytes at `data` (no copy), sets the bit and makes the
  // view the field's value. The bytes must outlive the object.
  void setItemGroupInt(const common::UInt8* data, int length);
  void setPermissionDataInt(const common::UInt8* data, int length);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_MANIFEST_INT_H_
