// A quality of service with the number of instances that offer it.
#ifndef ORVO_COMMON_QUALITY_OF_SERVICE_INFO_H_
#define ORVO_COMMON_QUALITY_OF_SERVICE_INFO_H_

#include "orvo/common/QualityOfService.h"

namespace orvo {
namespace common {

class QualityOfServiceInfo {
 public:
  QualityOfServiceInfo() : _instCount(0) {}
  virtual ~QualityOfServiceInfo() = default;

  const QualityOfService& getQualityOfService() const { return _qos; }
  void setQualityOfService(const QualityOfService& qos) { _qos = qos; }
  long getQualityOfServiceInstCount() const { return _instCount; }
  void setQualityOfServiceInstCount(long count) { _instCount = count; }

 private:
  QualityOfService _qos;
  long _instCount;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_QUALITY_OF_SERVICE_INFO_H_
