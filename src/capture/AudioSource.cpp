#include "capture/AudioSource.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "capture/IqSign.h"
#include "dsp/Levels.h"

namespace spectrino {

namespace {
constexpr std::chrono::milliseconds kPassTime{10};  // twice what a pass waits after a frame
constexpr int kMostSkipped = 64;
}  // namespace

bool AudioSource::OpenCapture(SoundInput& input, const SoundDevice& device, const CaptureSettings& settings,
                              std::string& reason) {
  Prepare(settings);
  std::unique_ptr<SoundStream> stream = input.Open(device, settings.SampleRate, BlockFrames(), reason);
  if (!stream) return false;
  Adopt(std::move(stream), device.Name);
  return true;
}

void AudioSource::Prepare(const CaptureSettings& settings) {
  CloseCapture();
  settings_ = settings;
  spectrum_.Prepare(settings.FftBits, settings.Window);
  const auto points = static_cast<std::size_t>(spectrum_.SpectrumPoints());
  captureSamples_.assign(points / 2, 0);
  power_.assign(points, 0);
  levelOffsetDb_ = LevelOffsetDb(settings.Window, settings.FftBits);
  blockPeriod_ = std::chrono::duration_cast<std::chrono::nanoseconds>(
      std::chrono::duration<double>(static_cast<double>(points / 4) / settings.SampleRate));
}

void AudioSource::Adopt(std::unique_ptr<SoundStream> stream, const std::string& name) {
  stream_ = std::move(stream);
  name_ = name;
  cause_.clear();
  failure_.clear();
  silence_.Restart();
  lastBlock_ = clock_.Now();
}

std::string AudioSource::Warning() const {
  if (!stream_) return {};
  std::string warning = stream_->Warning();
  return warning.empty() ? silence_.Warning(name_) : warning;
}

std::chrono::nanoseconds AudioSource::UntilBlock() const {
  if (!stream_) return blockPeriod_;
  return std::max(std::chrono::nanoseconds{}, lastBlock_ + blockPeriod_ - clock_.Now());
}

PollResult AudioSource::Poll(const LineRequest& request, SpectrumLine& line) {
  if (!stream_) return PollResult::Pending;
  const auto before = std::chrono::steady_clock::now();
  BlockState state = stream_->TakeBlock(captureSamples_);
  // Blocks that come faster than passes: the newest is shown, or the picture would fall further and further
  // behind.
  for (int skipped = 0; state == BlockState::Done && blockPeriod_ < kPassTime && skipped < kMostSkipped;
       ++skipped) {
    state = stream_->TakeBlock(captureSamples_);
    if (state == BlockState::Pending) {
      state = BlockState::Done;
      break;
    }
  }
  if (state == BlockState::Pending) return PollResult::Pending;
  if (state == BlockState::Failed) return Fail();
  // Only passes that got a block count: a thousand empty looks a second would hide the copy's own time.
  times_.Add(Stage::Capture, std::chrono::steady_clock::now() - before);
  FillLine(request, line);
  return PollResult::Line;
}

PollResult AudioSource::Discard() {
  if (!stream_) return PollResult::Pending;
  PollResult result = PollResult::Pending;
  for (int skipped = 0; skipped < kMostSkipped; ++skipped) {
    const BlockState state = stream_->TakeBlock(captureSamples_);
    if (state == BlockState::Pending) break;
    if (state == BlockState::Failed) return Fail();
    result = PollResult::Line;
  }
  return result;
}

PollResult AudioSource::Fail() {
  cause_ = stream_->Cause();
  failure_ = stream_->Failure();
  return PollResult::Failed;
}

void AudioSource::FillLine(const LineRequest& request, SpectrumLine& line) {
  line.Arrived = lastBlock_ = clock_.Now();
  silence_.Heard(captureSamples_, line.Arrived - blockPeriod_, line.Arrived);
  line.TakenUtc = clock_.UtcNow();
  {
    const StageTimer timer(times_, Stage::Transform);
    const int sign =
        settings_.ChannelSign * request.BandFlip * ModeFlip(request.RadioMode, FlipIqCw, FlipIqUsb);
    spectrum_.ComputeSpectrum(captureSamples_, sign > 0 ? IqSign::Plus : IqSign::Minus, Balance, SmoothZeroHz,
                              power_);
  }
  {
    const StageTimer timer(times_, Stage::Levels);
    line.Levels.resize(power_.size());
    PowerToLevels(power_, levelOffsetDb_ + request.LevelCorrectionDb, line.Levels);
    // A point without a magnitude keeps its level of before, but a whole line of them would be a picture of
    // what is no longer received.
    if (silence_.StandsStill()) std::ranges::replace(line.Levels, kKeepLevel, kEmptyLevel);
  }
  line.PointCount = spectrum_.SpectrumPoints();
  line.FirstIndex = 0;
  // To a hundredth of a hertz: with a fixed oscillator the offset follows the dial, and what stands still on
  // the band must not differ in the last bit from line to line.
  const double zeroMHz = std::round((request.RadioFreqMHz - request.IfOffsetKHz / 1000) * 1e8) / 1e8;
  const double halfMHz = settings_.SampleRate / 2e6;
  line.LeftMHz = zeroMHz - halfMHz;
  line.CentreMHz = request.RadioFreqMHz;
  line.RightMHz = zeroMHz + halfMHz;
  line.BottomLevel = request.BottomLevel;
  line.TopLevel = request.TopLevel;
  line.Serial = ++serial_;
}

}  // namespace spectrino
