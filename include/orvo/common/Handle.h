// A handle of the session layer. orvo asks it only for the wire format
// version of the connection it stands for; 0 as major version means unset.
#ifndef ORVO_COMMON_HANDLE_H_
#define ORVO_COMMON_HANDLE_H_

#include "orvo/common/Types.h"

namespace orvo {
namespace common {

class Handle {
 public:
  virtual ~Handle() = default;
  virtual UInt8 getMajorVersion() const = 0;
  virtual UInt8 getMinorVersion() const = 0;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_HANDLE_H_
