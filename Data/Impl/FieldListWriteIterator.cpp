#include "orvo/data/FieldListWriteIterator.h"

#include "Data/Impl/ListFamily.h"
#include "orvo/data/FieldListDef.h"

namespace orvo {
namespace data {
namespace {

// The steps are shared with ElementListWriteIterator; this iterator lends
// them its state for the call.
using Writer = internal::ListWriter<internal::FieldListFamily>;

}  // namespace

const common::ORVO_String FieldListWriteIterator::_className("FieldListWriteIterator");

FieldListWriteIterator::FieldListWriteIterator() : _definedBound(0) {}

FieldListWriteIterator::~FieldListWriteIterator() = default;

void FieldListWriteIterator::start(FieldList& list, common::UInt8 iteratorMask,
                                   const FieldListDef* def, common::UInt16 /*size*/) {
  Writer(_attrib, _definedBound, _className).start(list, iteratorMask, def);
}

void FieldListWriteIterator::bind(const common::Data& data) {
  Writer(_attrib, _definedBound, _className).bindDefined(data);
}

void FieldListWriteIterator::bind(const FieldEntry& entry) {
  Writer(_attrib, _definedBound, _className).bindStandard(entry);
}

void FieldListWriteIterator::complete() { Writer(_attrib, _definedBound, _className).complete(); }

}  // namespace data
}  // namespace orvo
