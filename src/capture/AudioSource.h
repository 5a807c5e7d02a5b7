// The sound card as a spectrum source: one block, one transform, one line of levels.
// Neither lists devices nor keeps history.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "capture/SilenceWatch.h"
#include "dsp/Spectrum.h"
#include "dsp/WindowTable.h"
#include "platform/Clock.h"
#include "platform/SoundInput.h"
#include "state/SpectrumSource.h"
#include "state/StageTimes.h"

namespace spectrino {

/// What a run decides once, at Start.
struct CaptureSettings {
  int SampleRate = 44100;  ///< Hz
  int FftBits = 13;
  WindowType Window = WindowType::None;
  int ChannelSign = 1;  ///< -1 when "I<>Q" is set
};

class AudioSource final : public SpectrumSource {
 public:
  AudioSource(const Clock& clock, StageTimes& times) : clock_(clock), times_(times) {}

  /// OpenCapture: opens the device at exactly the rate, one block of N bytes per frame. False with the reason
  /// for the log when that is not to be had.
  bool OpenCapture(SoundInput& input, const SoundDevice& device, const CaptureSettings& settings,
                   std::string& reason);
  /// The same in two steps: what blocks will be like, with nothing open; then the stream that brings them.
  void Prepare(const CaptureSettings& settings);
  void Adopt(std::unique_ptr<SoundStream> stream, const std::string& name);
  /// Closes at once; a block that is pending is discarded.
  void CloseCapture() { stream_.reset(); }
  [[nodiscard]] bool IsOpen() const { return stream_ != nullptr; }

  /// As prepared.
  [[nodiscard]] int SampleRate() const { return settings_.SampleRate; }
  [[nodiscard]] int BlockFrames() const { return static_cast<int>(captureSamples_.size() / 2); }

  /// How long the next block will take to arrive, by the rate and the time of the last one; zero when it is
  /// due, a block's time when nothing is open.
  [[nodiscard]] std::chrono::nanoseconds UntilBlock() const;
  /// While nobody looks: lets blocks go by without a transform. As Poll, but that Line brings no line.
  PollResult Discard();
  PollResult Poll(const LineRequest& request, SpectrumLine& line) override;
  [[nodiscard]] std::string Failure() const override { return failure_; }
  /// After Failed: what happened, without a full stop.
  [[nodiscard]] const std::string& Cause() const { return cause_; }
  /// What is wrong with what comes, in the user's terms: the mixer's doing, or silence.
  [[nodiscard]] std::string Warning() const;

  IqBalance Balance;          ///< set by the calibration sliders; acts on the next frame
  bool SmoothZeroHz = false;  ///< replace the bins round 0 Hz by the mean
  bool FlipIqCw = false;      ///< settings "IQCW" and "IQUSB"
  bool FlipIqUsb = false;

 private:
  PollResult Fail();
  void FillLine(const LineRequest& request, SpectrumLine& line);

  const Clock& clock_;
  StageTimes& times_;
  CaptureSettings settings_;
  std::unique_ptr<SoundStream> stream_;
  Spectrum spectrum_;
  std::vector<std::int16_t> captureSamples_;  // N/4 stereo frames: the N bytes that one block delivers
  std::vector<double> power_;
  float levelOffsetDb_ = 0;
  std::chrono::nanoseconds blockPeriod_{};
  std::chrono::steady_clock::time_point lastBlock_{};
  SilenceWatch silence_;
  std::string name_;
  std::uint64_t serial_ = 0;
  std::string cause_;
  std::string failure_;
};

}  // namespace spectrino
