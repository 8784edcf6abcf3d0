// The collector a validation writes into: three texts borrowed from the
// caller, errors (index 0), warnings (1) and information (2). Validators
// only append to them. TextWantedFlag says that somebody will read the
// warnings and the information, so collecting them all is worth the while.
#ifndef ORVO_MESSAGE_TEXT_MESSAGE_INFO_H_
#define ORVO_MESSAGE_TEXT_MESSAGE_INFO_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace message {

class TextMessageInfo {
 public:
  enum Flags { TextWantedFlag = 0x02 };

  // `texts` must hold three strings and outlive the object.
  explicit TextMessageInfo(common::ORVO_Vector<common::ORVO_String>* texts)
      : _flags(0), _texts(texts) {}
  ~TextMessageInfo() {}

  TextMessageInfo(const TextMessageInfo&) = delete;
  TextMessageInfo& operator=(const TextMessageInfo&) = delete;

  common::UInt8 getFlags() const { return _flags; }
  void setFlags(common::UInt8 flags) { _flags = flags; }
  bool isTextWanted() const { return (_flags & TextWantedFlag) != 0; }

  common::ORVO_String& errors() const { return (*_texts)[0]; }
  common::ORVO_String& warnings() const { return (*_texts)[1]; }
  common::ORVO_String& information() const { return (*_texts)[2]; }

 private:
  common::UInt8 _flags;
  common::ORVO_Vector<common::ORVO_String>* _texts;
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_TEXT_MESSAGE_INFO_H_
