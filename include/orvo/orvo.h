// Everything an application can reach in orvo, in one include.
#ifndef ORVO_ORVO_H_
#define ORVO_ORVO_H_

// Common runtime.
#include "orvo/common/Buffer.h"
#include "orvo/common/Exception.h"
#include "orvo/common/GeneralExceptionStatus.h"
#include "orvo/common/Handle.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/ORVO_WString.h"
#include "orvo/common/OutOfRangeException.h"
#include "orvo/common/PublisherPrincipalIdentity.h"
#include "orvo/common/QualityOfService.h"
#include "orvo/common/QualityOfServiceInfo.h"
#include "orvo/common/QualityOfServiceRequest.h"
#include "orvo/common/Status.h"
#include "orvo/common/Types.h"
#include "orvo/common/UnicodeUtil.h"
#include "orvo/common/UseOrvoVerify.h"

// Object core.
#include "orvo/common/Data.h"
#include "orvo/common/DataDef.h"
#include "orvo/common/Msg.h"
#include "orvo/common/RespStatus.h"
#include "orvo/data/DataType.h"
#include "orvo/data/NoData.h"

// Primitive values.
#include "orvo/data/DataBuffer.h"
#include "orvo/data/Date.h"
#include "orvo/data/DateTime.h"
#include "orvo/data/Real32.h"
#include "orvo/data/Real64.h"
#include "orvo/data/Time.h"

// Entries, field and element lists, set definitions.
#include "orvo/data/DataEntry.h"
#include "orvo/data/ElementEntry.h"
#include "orvo/data/ElementEntryDef.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/ElementListDef.h"
#include "orvo/data/ElementListDefReadIterator.h"
#include "orvo/data/ElementListDefWriteIterator.h"
#include "orvo/data/ElementListReadIterator.h"
#include "orvo/data/ElementListWriteIterator.h"
#include "orvo/data/EntryAttrib.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldEntryDef.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListDef.h"
#include "orvo/data/FieldListDefReadIterator.h"
#include "orvo/data/FieldListDefWriteIterator.h"
#include "orvo/data/FieldListReadIterator.h"
#include "orvo/data/FieldListWriteIterator.h"
#include "orvo/data/WriteIteratorAttrib.h"

// Message attributes and encoded messages.
#include "orvo/message/AttribInfo.h"
#include "orvo/message/EncodedMsg.h"
#include "orvo/message/GroupID.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/ManifestInt.h"
#include "orvo/message/OwireEncodedMsg.h"
#include "orvo/message/OwireEncodedMsgPool.h"
#include "orvo/message/OwireUnencodedMsg.h"

// Response messages.
#include "orvo/message/RespMsg.h"
#include "orvo/message/RespMsgInt.h"
#include "orvo/message/RespMsgTranslator.h"

// Validation.
#include "orvo/message/AckMsgValidator.h"
#include "orvo/message/DictionaryDomainMessageValidator.h"
#include "orvo/message/DirectoryDomainMessageValidator.h"
#include "orvo/message/DomainMessageValidatorManager.h"
#include "orvo/message/GenericMsgValidator.h"
#include "orvo/message/LoginDomainMessageValidator.h"
#include "orvo/message/MarketByOrderDomainMessageValidator.h"
#include "orvo/message/MarketByPriceDomainMessageValidator.h"
#include "orvo/message/MarketMakerDomainMessageValidator.h"
#include "orvo/message/MarketPriceDomainMessageValidator.h"
#include "orvo/message/MsgValidatorManager.h"
#include "orvo/message/PostMsgValidator.h"
#include "orvo/message/ReqMsgValidator.h"
#include "orvo/message/RespMsgValidator.h"
#include "orvo/message/SymbolListDomainMessageValidator.h"
#include "orvo/message/TextMessageInfo.h"

// Integrity diagnostics.
#include "orvo/common/ExceptionFilter.h"
#include "orvo/common/LogPath.h"
#include "orvo/common/VerifyFailure.h"

// Field dictionary.
#include "orvo/odm/ODMFidDef.h"
#include "orvo/odm/ODMFieldDictionary.h"
#include "orvo/odm/ODMFieldDictionaryInt.h"
#include "orvo/odm/OMMType.h"
#include "orvo/odm/OrvoFeedType.h"

#endif  // ORVO_ORVO_H_
