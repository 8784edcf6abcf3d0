// Base of status values: a status text, held as a narrow text object and
// optionally as raw narrow and wide copies. Built only through subclasses.
#ifndef ORVO_COMMON_STATUS_H_
#define ORVO_COMMON_STATUS_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_WString.h"

namespace orvo {
namespace common {

class Status {
 public:
  // The empty text when none was set.
  const ORVO_String& getStatusText() const;
  virtual void setStatusText(const ORVO_String& text);

 protected:
  Status();
  Status(const Status& other);
  virtual ~Status();
  Status& operator=(const Status& other);

  // Frees every text the status holds and zeroes the ownership flags.
  void releaseTexts();

  ORVO_String* _statusText;     // narrow text object, owned
  char* _rawText;               // raw narrow copy; freed when _ownsRawText
  ORVO_WString* _wideText;      // wide text object, owned
  unsigned short* _rawWideText;  // raw wide copy; freed when _ownsRawWideText
  bool _ownsRawText;
  bool _ownsRawWideText;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_STATUS_H_
