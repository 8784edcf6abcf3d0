// The wire data type of a field, as a field dictionary records it. The numbers
// are the wire format's data type codes.
#ifndef ORVO_ODM_OMM_TYPE_H_
#define ORVO_ODM_OMM_TYPE_H_

namespace orvo {
namespace odm {

enum OMMType : int {
  OMMInt = 3,
  OMMUInt = 4,
  OMMFloat = 5,
  OMMDouble = 6,
  OMMReal = 8,
  OMMDate = 9,
  OMMTime = 10,
  OMMDateTime = 11,
  OMMQos = 12,
  OMMStatus = 13,
  OMMEnum = 14,
  OMMArray = 15,
  OMMBuffer = 16,
  OMMAsciiString = 17,
  OMMUtf8String = 18,
  OMMOmtesString = 19,
  OMMOpaque = 130,
  OMMXml = 131,
  OMMFieldList = 132,
  OMMElementList = 133,
  OMMAnsiPage = 134,
  OMMFilterList = 135,
  OMMVector = 136,
  OMMMap = 137,
  OMMSeries = 138,
  OMMMsg = 141
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_ODM_OMM_TYPE_H_
