// Everything an application can reach in orvo, in one include.
#ifndef ORVO_ORVO_H_
#define ORVO_ORVO_H_

#include "orvo/common/Types.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Exception.h"
#include "orvo/common/GeneralExceptionStatus.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/OutOfRangeException.h"
#include "orvo/common/UseOrvoVerify.h"

#endif  // ORVO_ORVO_H_
