#include "orvo/odm/ODMFidDef.h"

#include <cstring>

#include "Data/Impl/StringToType.h"

namespace orvo {
namespace odm {

using common::Int64;
using common::ORVO_String;

ODMFidDef::~ODMFidDef() = default;

ORVO_String ODMFidDef::ommTypeToString(Int64 type) {
  switch (type) {
    case OMMInt:
      return ORVO_String("INT");
    case OMMUInt:
      return ORVO_String("UINT");
    case OMMFloat:
      return ORVO_String("FLOAT");
    case OMMDouble:
      return ORVO_String("DOUBLE");
    case OMMReal:
      return ORVO_String("REAL");
    case OMMDate:
      return ORVO_String("DATE");
    case OMMTime:
      return ORVO_String("TIME");
    case OMMDateTime:
      return ORVO_String("DATETIME");
    case OMMQos:
      return ORVO_String("QOS");
    case OMMStatus:
      return ORVO_String("STATUS");
    case OMMEnum:
      return ORVO_String("ENUM");
    case OMMArray:
      return ORVO_String("ARRAY");
    case OMMBuffer:
      return ORVO_String("BUFFER");
    case OMMAsciiString:
      return ORVO_String("ASCII_STRING");
    case OMMUtf8String:
      return ORVO_String("UTF8_STRING");
    case OMMOmtesString:
      return ORVO_String("OMTES_STRING");
    case OMMOpaque:
      return ORVO_String("OPAQUE");
    case OMMXml:
      return ORVO_String("XML");
    case OMMFieldList:
      return ORVO_String("FIELD_LIST");
    case OMMElementList:
      return ORVO_String("ELEMENT_LIST");
    case OMMAnsiPage:
      return ORVO_String("ANSI_PAGE");
    case OMMFilterList:
      return ORVO_String("FILTER_LIST");
    case OMMVector:
      return ORVO_String("VECTOR");
    case OMMMap:
      return ORVO_String("MAP");
    case OMMSeries:
      return ORVO_String("SERIES");
    case OMMMsg:
      return ORVO_String("MSG");
    default:
      return ORVO_String("UNKNOWN");
  }
}

ORVO_String ODMFidDef::ommTypeToString(OMMType type) {
  return ommTypeToString(static_cast<Int64>(type));
}

ORVO_String ODMFidDef::fieldTypeToString(Int64 type) {
  switch (type) {
    case FeedTimeSeconds:
      return ORVO_String("TIME_SECONDS");
    case FeedInteger:
      return ORVO_String("INTEGER");
    case FeedNumeric:
      return ORVO_String("NUMERIC");
    case FeedDate:
      return ORVO_String("DATE");
    case FeedPrice:
      return ORVO_String("PRICE");
    case FeedAlphanumeric:
      return ORVO_String("ALPHANUMERIC");
    case FeedEnumerated:
      return ORVO_String("ENUMERATED");
    case FeedTime:
      return ORVO_String("TIME");
    case FeedBinary:
      return ORVO_String("BINARY");
    case FeedLongAlphanumeric:
      return ORVO_String("LONGALPHANUMERIC");
    case FeedOpaqueType:
      return ORVO_String("OPAQUETYPE");
    default:
      return ORVO_String("NONE");
  }
}

ORVO_String ODMFidDef::fieldTypeToString(OrvoFeedType type) {
  return fieldTypeToString(static_cast<Int64>(type));
}

OMMType ODMFidDef::stringToOMMType(const char* text) {
  if (text == nullptr) text = "";
  return static_cast<OMMType>(
      StringToType::toOMMType(text, static_cast<common::UInt32>(std::strlen(text))));
}

OrvoFeedType ODMFidDef::stringToFieldType(const char* text) {
  if (text == nullptr) text = "";
  return static_cast<OrvoFeedType>(
      StringToType::toFieldType(text, static_cast<common::UInt32>(std::strlen(text))));
}

}  // namespace odm
}  // namespace orvo
