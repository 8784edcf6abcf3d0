// Quality of service: a timeliness and a rate. Negative values are the
// "unspecified" forms; realTime and tickByTick are not negative; delays in
// seconds stand below unspecifiedDelayedTimeliness and filter intervals in
// milliseconds below justInTimeFilteredRate.
#ifndef ORVO_COMMON_QUALITY_OF_SERVICE_H_
#define ORVO_COMMON_QUALITY_OF_SERVICE_H_

namespace orvo {
namespace common {

class QualityOfService {
 public:
  static const long realTime;
  static const long unspecifiedTimeliness;
  static const long unspecifiedDelayedTimeliness;
  static const long tickByTick;
  static const long justInTimeFilteredRate;
  static const long unspecifiedRate;

  QualityOfService() : _timeliness(realTime), _rate(tickByTick) {}
  QualityOfService(long timeliness, long rate) : _timeliness(timeliness), _rate(rate) {}

  long getTimeliness() const { return _timeliness; }
  void setTimeliness(long timeliness) { _timeliness = timeliness; }
  long getRate() const { return _rate; }
  void setRate(long rate) { _rate = rate; }

  bool operator==(const QualityOfService& other) const {
    return _timeliness == other._timeliness && _rate == other._rate;
  }
  bool operator!=(const QualityOfService& other) const { return !(*this == other); }

 private:
  long _timeliness;
  long _rate;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_QUALITY_OF_SERVICE_H_
