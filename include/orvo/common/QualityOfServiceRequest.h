// A requested range of quality of service: best and worst timeliness and
// rate, and a stream property. realTime and tickByTick are the best values;
// delayed and slowestRate the worst; a rate below justInTimeFilteredRate is
// a filter interval in milliseconds.
#ifndef ORVO_COMMON_QUALITY_OF_SERVICE_REQUEST_H_
#define ORVO_COMMON_QUALITY_OF_SERVICE_REQUEST_H_

namespace orvo {
namespace common {

class QualityOfServiceRequest {
 public:
  enum StreamPropertyEnum { NoStreamProperty = 0, Streaming = 1, NonStreaming = 2 };

  static const long realTime;
  static const long delayed;
  static const long tickByTick;
  static const long justInTimeFilteredRate;
  static const long slowestRate;

  QualityOfServiceRequest()
      : _bestTimeliness(realTime),
        _worstTimeliness(realTime),
        _bestRate(tickByTick),
        _worstRate(tickByTick),
        _streamProperty(Streaming) {}

  long getBestTimeliness() const { return _bestTimeliness; }
  void setBestTimeliness(long value) { _bestTimeliness = value; }
  long getWorstTimeliness() const { return _worstTimeliness; }
  void setWorstTimeliness(long value) { _worstTimeliness = value; }
  long getBestRate() const { return _bestRate; }
  void setBestRate(long value) { _bestRate = value; }
  long getWorstRate() const { return _worstRate; }
  void setWorstRate(long value) { _worstRate = value; }
  StreamPropertyEnum getStreamProperty() const { return _streamProperty; }
  void setStreamProperty(StreamPropertyEnum value) { _streamProperty = value; }

 private:
  long _bestTimeliness;
  long _worstTimeliness;
  long _bestRate;
  long _worstRate;
  StreamPropertyEnum _streamProperty;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_QUALITY_OF_SERVICE_REQUEST_H_
