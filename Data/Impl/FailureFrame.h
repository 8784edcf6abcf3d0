// The fixed forms in which the library words a failure, and the three shapes
// (illegal call, bad value, out of range) in which it raises one. Every class
// reports through these functions so that all texts are built the same way.
#ifndef ORVO_DATA_IMPL_FAILURE_FRAME_H_
#define ORVO_DATA_IMPL_FAILURE_FRAME_H_

#include "orvo/common/ORVO_String.h"

namespace orvo {
namespace internal {

using common::ORVO_String;

// Shapes. Illegal call: wrong order, wrong state, codec failures (state 1).
// Bad value: a rejected argument or unparsable message data (state 2).
// Out of range: a numeric conversion that does not fit.
[[noreturn]] void raiseIllegalCall(const ORVO_String& text);
[[noreturn]] void raiseBadValue(const ORVO_String& text);
[[noreturn]] void raiseOutOfRange(const ORVO_String& text);

// Bracket form: "<text> in class [<class>] in method [<method>]", cut to
// 256 bytes. Illegal call.
[[noreturn]] void failMessage(const char* text, const ORVO_String& className, const char* method);
[[noreturn]] void failMessage(const char* text, const char* className, const char* method);

// Plain form: "<text> in class <class> in method <method>", never cut.
// Illegal call.
[[noreturn]] void throwUsage(const char* text, const char* className, const char* method);
[[noreturn]] void throwUsage(const char* text, const ORVO_String& className, const char* method);

// While form: "<code text> while <phrase> <noun> in class [<class>] in method
// [<method>]", cut to 256 bytes. Illegal call.
[[noreturn]] void failWhile(int ret, const ORVO_String& phrase, const char* noun,
                            const char* className, const char* method);

// Reason form: `literal` (which ends in a blank) followed by the codec's text
// for `ret`. Illegal call.
[[noreturn]] void failReason(const char* literal, int ret);

// Value form: `open` + the value in decimal + `close`. The date and time
// setters raise it as a bad value, the DataBuffer getters as an illegal call.
ORVO_String valueText(const char* open, unsigned int value, const char* close);

// Builds the bracket-form text without raising, for sites that raise it in
// another shape.
ORVO_String bracketText(const char* text, const char* className, const char* method);

// Phrases of the while form and the nouns that go with them.
extern const ORVO_String kPhraseInitializing;
extern const ORVO_String kPhraseInitializingEncodeFor;
extern const ORVO_String kPhraseEncoding;
extern const ORVO_String kPhraseCompletingEncodeFor;
extern const ORVO_String kPhraseInitializingDecodeFor;
extern const ORVO_String kPhraseDecoding;
extern const ORVO_String kPhraseCompletingDecodeFor;
extern const ORVO_String kPhraseForthBeforeStart;
extern const ORVO_String kPhraseWhenSetDataFor;

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_FAILURE_FRAME_H_
