#include "orvo/common/QualityOfService.h"
#include "orvo/common/QualityOfServiceRequest.h"

namespace orvo {
namespace common {

// Plain delays and intervals are 0 .. 2^31 - 3; the two special forms sit
// just above them so that ordered comparisons separate the three kinds.
const long QualityOfService::realTime = 0;
const long QualityOfService::unspecifiedTimeliness = -1;
const long QualityOfService::unspecifiedDelayedTimeliness = 0x7FFFFFFF;
const long QualityOfService::tickByTick = 0;
const long QualityOfService::justInTimeFilteredRate = 0x7FFFFFFE;
const long QualityOfService::unspecifiedRate = -1;

const long QualityOfServiceRequest::realTime = 0;
const long QualityOfServiceRequest::delayed = 0x7FFFFFFF;
const long QualityOfServiceRequest::tickByTick = 0;
const long QualityOfServiceRequest::justInTimeFilteredRate = 0x7FFFFFFE;
const long QualityOfServiceRequest::slowestRate = 0x7FFFFFFF;

}  // namespace common
}  // namespace orvo
