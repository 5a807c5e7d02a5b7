// One recording of one source of the sound server, sample for sample as the source gives them.
// Not the list of sources, and no conversion: a source that the server would have to resample is refused.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

#include "adapters/sound/PulseServer.h"
#include "adapters/sound/SampleRing.h"
#include "platform/SoundInput.h"

namespace spectrino {

/// What to record and how the user knows it.
struct PulseRequest {
  std::string SourceName;
  std::string ShownName;
  int RateHz = 0;
  int BlockFrames = 0;
};

/// Fails when the source or the server goes away, and when nothing arrives for 2 s; the first samples may
/// take 4 s.
class PulseStream final : public SoundStream {
 public:
  explicit PulseStream(PulseRequest request);
  ~PulseStream() override;

  /// Once, before anything else. False with a reason for the log when the recording cannot be had as
  /// requested.
  [[nodiscard]] bool Open(std::string& reason);
  /// After Open. False when the system refuses real-time scheduling to the capture thread.
  [[nodiscard]] bool RaiseThreadPriority();

  BlockState TakeBlock(std::span<std::int16_t> block) override;
  [[nodiscard]] std::string Cause() const override;
  [[nodiscard]] std::string Failure() const override;
  [[nodiscard]] std::string Warning() const override;

 private:
  using Deadline = PulseServer::Deadline;

  // Steps of Open; the server's Lock is held.
  bool FindSource(Deadline deadline, std::string& reason);
  bool StartRecording(Deadline deadline, std::string& reason);
  bool TryRecording(Deadline deadline, bool ofDuplex);
  void DropStream();
  [[nodiscard]] bool IsOnSource() const;
  bool SourceKeepsRate(Deadline deadline, std::string& reason);
  void Subscribe();
  void StartWatch();

  // On the event thread.
  void ReadSamples();
  void StreamChanged();
  void ServerEvent(pa_subscription_event_type_t type, std::uint32_t index);
  void SourceChanged(const pa_source_info& info);
  void RecordingChanged(const pa_source_output_info& info);
  void WatchTick(pa_time_event* event);

  void AskForSource();
  void AskForRecording();
  [[nodiscard]] int OtherRateHz(const PulseSource& source) const;
  /// cause: without a full stop. advice: what the user does then, as sentences.
  void Fail(std::string cause, std::string advice);
  void FailUnplugged();
  void SetWarning(std::string& slot, std::string text);
  [[nodiscard]] std::string Quoted() const { return "\"" + request_.ShownName + "\""; }

  const PulseRequest request_;
  PulseServer server_;
  pa_stream* stream_ = nullptr;
  pa_time_event* watch_ = nullptr;
  std::uint32_t sourceIndex_ = PA_INVALID_INDEX;
  bool recordingChanged_ = true;  // since it was asked for
  int silentTicks_ = 0;
  int silentTicksAllowed_;
  SampleRing ring_;
  std::atomic<bool> failed_{false};

  mutable std::mutex textMutex_;
  std::string cause_;
  std::string advice_;
  std::string sourceWarning_;     // the input's own volume and mute
  std::string recordingWarning_;  // what the server's mixer does to our recording alone
};

}  // namespace spectrino
