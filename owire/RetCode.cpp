#include "orvo/owire/owire.h"

const char* owireRetCodeToString(int code) {
  switch (code) {
    case OWIRE_RET_SUCCESS: return "Success";
    case OWIRE_RET_FAILURE: return "General failure";
    case OWIRE_RET_INVALID_ARGUMENT: return "Invalid argument";
    case OWIRE_RET_INCOMPLETE_DATA: return "Incomplete data";
    case OWIRE_RET_UNSUPPORTED_DATA_TYPE: return "Unsupported data type";
    case OWIRE_RET_INVALID_VERSION: return "Invalid version";
    case OWIRE_RET_ITERATOR_OVERRUN: return "Iterator overrun";
    case OWIRE_RET_ENCODING_UNAVAILABLE: return "Encoding unavailable";
    case OWIRE_RET_SET_DEF_NOT_PROVIDED: return "Set definition not provided";
    case OWIRE_RET_INVALID_ENCODE_STATE: return "Invalid encode state";
    case OWIRE_RET_BUFFER_TOO_SMALL: return "Buffer too small";
    case OWIRE_RET_INVALID_DATA: return "Invalid data";
    case OWIRE_RET_END_OF_CONTAINER: return "End of container";
    case OWIRE_RET_BLANK_DATA: return "Blank data";
    default: return code < 0 ? "Unknown failure" : "Success";
  }
}
