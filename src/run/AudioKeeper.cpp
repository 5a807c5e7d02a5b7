#include "run/AudioKeeper.h"

#include <utility>

namespace spectrino {
namespace {

std::string WithoutFullStop(std::string sentence) {
  if (sentence.ends_with('.')) sentence.pop_back();
  return sentence;
}

}  // namespace

bool AudioKeeper::Open(const DeviceList::Entry& entry, const CaptureSettings& settings, bool reconnect,
                       std::string& reason) {
  Close();
  if (!source_.OpenCapture(*entry.Input, entry.Device, settings, reason)) return false;
  entry_ = entry;
  reconnect_ = reconnect;
  watch_.TryAgain(reconnect);
  watch_.Begin();
  return true;
}

bool AudioKeeper::Reopen(const CaptureSettings& settings, std::string& reason) {
  if (!watch_.IsLost()) return source_.OpenCapture(*entry_.Input, entry_.Device, settings, reason);
  // What is being opened has the rate of before.
  opener_.Abandon();
  trying_ = false;
  source_.Prepare(settings);
  return true;
}

void AudioKeeper::Close() {
  opener_.Abandon();
  trying_ = false;
  source_.CloseCapture();
  watch_.End();
  entry_ = {};
}

PollResult AudioKeeper::Poll(const LineRequest& request, SpectrumLine& line) {
  if (!source_.IsOpen()) TryAgain();
  return Watched(source_.Poll(request, line));
}

PollResult AudioKeeper::Discard() {
  if (!source_.IsOpen()) TryAgain();
  return Watched(source_.Discard());
}

PollResult AudioKeeper::Watched(PollResult result) {
  if (result == PollResult::Line) {
    const bool returned = watch_.IsLost();
    watch_.Heard();
    if (!returned) return result;
    user_.Log(LogArea::Audio, "\"" + entry_.Device.Name + "\" is back");
    if (Returned) Returned();
  } else if (result == PollResult::Failed && reconnect_) {
    source_.CloseCapture();
    Lose(source_.Cause());
    return PollResult::Pending;
  }
  return result;
}

void AudioKeeper::Lose(std::string why) {
  if (!watch_.IsLost() || why != why_) user_.Log(LogArea::Audio, why + "; it is waited for");
  why_ = std::move(why);
  watch_.Lost(why_);
}

// The watch stays lost until the first block: a server that is starting may open an input and close it again.
void AudioKeeper::TryAgain() {
  if (!trying_) {
    if (opener_.IsFree() && watch_.TryDue())
      trying_ =
          opener_.Begin({entry_.Input, entry_.Device.StableId, source_.SampleRate(), source_.BlockFrames()});
    return;
  }
  std::optional<InputOpener::Outcome> outcome = opener_.Take();
  if (!outcome) return;
  trying_ = false;
  if (outcome->Stream)
    source_.Adopt(std::move(outcome->Stream), entry_.Device.Name);
  else
    // One that is still missing says nothing new about how it went.
    Lose(outcome->Listed ? WithoutFullStop(std::move(outcome->Reason)) : why_);
}

}  // namespace spectrino
