// Data type codes. They are the wire format's own and are written on the
// wire unchanged; every operation that takes a code also takes the number.
#ifndef ORVO_DATA_DATA_TYPE_H_
#define ORVO_DATA_DATA_TYPE_H_

namespace orvo {
namespace data {

enum DataTypeEnum {
  IntEnum = 3,
  UIntEnum = 4,
  FloatEnum = 5,
  DoubleEnum = 6,
  RealEnum = 8,
  DateEnum = 9,
  TimeEnum = 10,
  DateTimeEnum = 11,
  QosEnum = 12,
  StateEnum = 13,
  EnumerationEnum = 14,
  ArrayEnum = 15,
  BufferEnum = 16,
  AsciiStringEnum = 17,
  Utf8StringEnum = 18,
  OmtesStringEnum = 19,
  NoDataEnum = 128,
  OpaqueEnum = 130,
  XmlEnum = 131,
  FieldListEnum = 132,
  ElementListEnum = 133,
  AnsiPageEnum = 134,
  FilterListEnum = 135,
  VectorEnum = 136,
  MapEnum = 137,
  SeriesEnum = 138,
  MsgEnum = 141,
  DataBufferEnum = 142
};

// Entry type codes, as getEntryType() answers them.
enum EntryTypeEnum {
  VectorEntryEnum = 0xF1,
  ElementEntryEnum = 0xF2,
  FieldEntryEnum = 0xF3,
  MapEntryEnum = 0xF4,
  FilterEntryEnum = 0xF5,
  ArrayEntryEnum = 0xF6,
  SeriesEntryEnum = 0xF7
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_DATA_TYPE_H_
