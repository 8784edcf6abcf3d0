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

#endif  // ORVO_ORVO_H_
