#include "orvo/data/ElementListWriteIterator.h"

#include "Data/Impl/ListFamily.h"
#include "orvo/data/ElementListDef.h"

namespace orvo {
namespace data {
namespace {

// The steps are shared with FieldListWriteIterator; this iterator lends
// them its state for the call.
using Writer = internal::ListWriter<internal::ElementListFamily>;

}  // namespace

const common::ORVO_String ElementListWriteIterator::_className("ElementListWriteIterator");

ElementListWriteIterator::ElementListWriteIterator() : _definedBound(0) {}

ElementListWriteIterator::~ElementListWriteIterator() = default;

void ElementListWriteIterator::start(ElementList& list, common::UInt8 iteratorMask,
                                     const ElementListDef* def, common::UInt16 /*size*/) {
  Writer(_attrib, _definedBound, _className).start(list, iteratorMask, def);
}

void ElementListWriteIterator::bind(const common::Data& data) {
  Writer(_attrib, _definedBound, _className).bindDefined(data);
}

void ElementListWriteIterator::bind(const ElementEntry& entry) {
  Writer(_attrib, _definedBound, _className).bindStandard(entry);
}

void ElementListWriteIterator::complete() { Writer(_attrib, _definedBound, _className).complete(); }

}  // namespace data
}  // namespace orvo
