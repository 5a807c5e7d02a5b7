#include "adapters/sound/PulseStream.h"

#include <algorithm>
#include <utility>

#include "adapters/sound/CardRate.h"

namespace spectrino {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kOpenPatience{4000};
// Ticks, not the clock: a program that was itself stopped for a while must not blame the input.
constexpr milliseconds kWatchTick{250};
constexpr int kTicksPerSecond = 4;
constexpr int kSilentTicksAllowed = 2 * kTicksPerSecond;
// A virtual cable that idled sleeps up to 2 s before it sends the first samples.
constexpr int kFirstTicksAllowed = 4 * kTicksPerSecond;
// PipeWire switches a card to the forced rate a moment after the stream is ready.
constexpr milliseconds kRateRetry{50};
constexpr int kRateRetries = 6;

constexpr std::size_t kFrameBytes = 2 * sizeof(std::int16_t);

std::size_t StaleFrames(const PulseRequest& request) {
  return static_cast<std::size_t>(std::max(4 * request.BlockFrames, request.RateHz / 4));
}

// A block long, so that a block arrives when it is complete, but short enough for the watch to see life.
std::uint32_t FragmentBytes(const PulseRequest& request) {
  return static_cast<std::uint32_t>(std::min(request.BlockFrames, request.RateHz / 4)) *
         static_cast<std::uint32_t>(kFrameBytes);
}

int Percent(pa_volume_t volume) {
  return static_cast<int>((volume * 100ULL + PA_VOLUME_NORM / 2) / PA_VOLUME_NORM);
}

// Empty when nothing stands between the source's samples and ours.
std::string LevelWarning(const std::string& what, bool muted, const pa_cvolume& volume) {
  if (muted) return "Muted in the sound settings: " + what + ". Switch it on there.";
  if (pa_cvolume_channels_equal_to(&volume, PA_VOLUME_NORM)) return {};
  std::string percents;
  for (int channel = 0; channel < volume.channels; ++channel) {
    const std::string percent = std::to_string(Percent(volume.values[channel])) + " %";
    if (channel == 0) {
      percents = percent;
    } else if (volume.values[channel] != volume.values[0]) {
      percents += " / " + percent;
    }
  }
  return "The volume of " + what + " is " + percents +
         ". Set it to 100 % in the sound settings for true levels.";
}

std::string LastError(pa_context* context) {
  return pa_strerror(pa_context_errno(context));
}

}  // namespace

PulseStream::PulseStream(PulseRequest request)
    : request_(std::move(request)), silentTicksAllowed_(kFirstTicksAllowed), ring_(StaleFrames(request_)) {}

PulseStream::~PulseStream() {
  const PulseServer::Lock lock(server_);
  if (watch_ != nullptr) server_.Api()->time_free(watch_);
  DropStream();
  server_.Disconnect();
}

void PulseStream::DropStream() {
  if (stream_ == nullptr) return;
  pa_stream_set_state_callback(stream_, nullptr, nullptr);
  pa_stream_set_read_callback(stream_, nullptr, nullptr);
  pa_stream_set_moved_callback(stream_, nullptr, nullptr);
  pa_stream_disconnect(stream_);
  pa_stream_unref(stream_);
  stream_ = nullptr;
}

bool PulseStream::Open(std::string& reason) {
  const Deadline deadline = std::chrono::steady_clock::now() + kOpenPatience;
  const PulseServer::Lock lock(server_);
  if (!server_.Connect(deadline)) {
    reason = "No sound server answers.";
    return false;
  }
  if (!FindSource(deadline, reason)) return false;
  Subscribe();
  if (!StartRecording(deadline, reason) || !SourceKeepsRate(deadline, reason)) return false;
  StartWatch();
  return true;
}

bool PulseStream::FindSource(Deadline deadline, std::string& reason) {
  const auto source = server_.FindSource(request_.SourceName, deadline);
  if (!source) {
    reason = "The sound input " + Quoted() + " is not there: " + LastError(server_.Context()) + ".";
    return false;
  }
  if (source->Channels < 2) {
    reason = "The sound input " + Quoted() + " has one channel; I/Q needs two (left and right).";
    return false;
  }
  sourceIndex_ = source->Index;
  return true;
}

bool PulseStream::StartRecording(Deadline deadline, std::string& reason) {
  // PipeWire's session manager finds no node that is input and output in one, unless it is asked for what the
  // output plays: that is where such a node captures.
  const bool recording =
      TryRecording(deadline, false) ||
      (pa_context_errno(server_.Context()) == PA_ERR_NOENTITY && TryRecording(deadline, true));
  if (recording && IsOnSource()) return true;
  const char* other = recording ? pa_stream_get_device_name(stream_) : nullptr;
  const std::string why = other != nullptr
                              ? "the sound server gave \"" + std::string(other) + "\" in its place"
                              : LastError(server_.Context());
  reason = "The sound input " + Quoted() + " did not open: " + why + ".";
  return false;
}

bool PulseStream::IsOnSource() const {
  const char* name = pa_stream_get_device_name(stream_);
  return name != nullptr && request_.SourceName == name;
}

bool PulseStream::TryRecording(Deadline deadline, bool ofDuplex) {
  DropStream();
  failed_ = false;  // the end of an earlier try is none of the recording
  const pa_sample_spec format{PA_SAMPLE_S16LE, static_cast<std::uint32_t>(request_.RateHz), 2};
  pa_proplist* properties = pa_proplist_new();
  // PipeWire resamples, and says it does not, unless a stream insists; PulseAudio ignores these.
  const std::string rate = std::to_string(request_.RateHz);
  pa_proplist_sets(properties, "node.force-rate", rate.c_str());
  pa_proplist_sets(properties, "node.rate", ("1/" + rate).c_str());
  if (ofDuplex) pa_proplist_sets(properties, "stream.capture.sink", "true");
  stream_ = pa_stream_new_with_proplist(server_.Context(), "I/Q samples", &format, nullptr, properties);
  pa_proplist_free(properties);
  if (stream_ == nullptr) return false;
  pa_stream_set_state_callback(
      stream_, [](pa_stream*, void* self) { static_cast<PulseStream*>(self)->StreamChanged(); }, this);
  pa_stream_set_read_callback(
      stream_, [](pa_stream*, std::size_t, void* self) { static_cast<PulseStream*>(self)->ReadSamples(); },
      this);

  constexpr auto kDefault = static_cast<std::uint32_t>(-1);
  const pa_buffer_attr buffer{kDefault, kDefault, kDefault, kDefault, FragmentBytes(request_)};
  constexpr auto kFlags =
      static_cast<pa_stream_flags_t>(PA_STREAM_NO_REMIX_CHANNELS | PA_STREAM_NO_REMAP_CHANNELS |
                                     PA_STREAM_DONT_MOVE | PA_STREAM_ADJUST_LATENCY);
  if (pa_stream_connect_record(stream_, request_.SourceName.c_str(), &buffer, kFlags) != 0) return false;
  server_.WaitUntil([this] { return pa_stream_get_state(stream_) != PA_STREAM_CREATING; }, deadline);
  return pa_stream_get_state(stream_) == PA_STREAM_READY;
}

int PulseStream::OtherRateHz(const PulseSource& source) const {
  if (source.RateHz != request_.RateHz) return source.RateHz;
  if (!source.AlsaCard) return 0;
  const auto cardRateHz = ReadCardRateHz(*source.AlsaCard, source.AlsaDevice.value_or(0));
  return cardRateHz && *cardRateHz != request_.RateHz ? *cardRateHz : 0;
}

bool PulseStream::SourceKeepsRate(Deadline deadline, std::string& reason) {
  int otherRateHz = 0;
  for (int attempt = 0; attempt <= kRateRetries; ++attempt) {
    const auto source = server_.FindSource(request_.SourceName, deadline);
    if (!source) {
      reason = "The sound input " + Quoted() + " went away while it was opened.";
      return false;
    }
    SetWarning(sourceWarning_, LevelWarning("the sound input " + Quoted(), source->IsMuted, source->Volume));
    otherRateHz = OtherRateHz(*source);
    if (otherRateHz == 0) return true;
    server_.WaitUntil([] { return false; }, std::chrono::steady_clock::now() + kRateRetry);
  }
  reason = "The sound input " + Quoted() + " runs at " + std::to_string(otherRateHz) + " Hz, not at " +
           std::to_string(request_.RateHz) + " Hz; resampled it would show signals that are not there.";
  return false;
}

void PulseStream::Subscribe() {
  server_.SetLostHandler([this] { Fail("The sound server stopped", "When it runs again, press Start."); });
  pa_context_set_subscribe_callback(
      server_.Context(),
      [](pa_context*, pa_subscription_event_type_t type, std::uint32_t index, void* self) {
        static_cast<PulseStream*>(self)->ServerEvent(type, index);
      },
      this);
  constexpr auto kEvents =
      static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SOURCE_OUTPUT);
  if (pa_operation* operation = pa_context_subscribe(server_.Context(), kEvents, nullptr, nullptr))
    pa_operation_unref(operation);
}

void PulseStream::StartWatch() {
  // Not before the stream is ready: the server reports a move within the opening, too.
  pa_stream_set_moved_callback(
      stream_,
      [](pa_stream*, void* self) {
        auto& stream = *static_cast<PulseStream*>(self);
        if (stream.IsOnSource()) return;
        stream.Fail("The sound server moved the recording away from the sound input " + stream.Quoted(),
                    "Press Start to open it again.");
      },
      this);
  watch_ = pa_context_rttime_new(
      server_.Context(), pa_rtclock_now() + std::chrono::microseconds(kWatchTick).count(),
      [](pa_mainloop_api*, pa_time_event* event, const timeval*, void* self) {
        static_cast<PulseStream*>(self)->WatchTick(event);
      },
      this);
}

bool PulseStream::RaiseThreadPriority() {
  const PulseServer::Lock lock(server_);
  return server_.RaiseThreadPriority(std::chrono::steady_clock::now() + kOpenPatience);
}

void PulseStream::ReadSamples() {
  while (pa_stream_readable_size(stream_) > 0) {
    const void* data = nullptr;
    std::size_t bytes = 0;
    if (pa_stream_peek(stream_, &data, &bytes) != 0 || bytes == 0) return;
    // Without data it is a hole, where the server lost samples: they are gone, whatever is put in their
    // place.
    if (data != nullptr) {
      ring_.Write({static_cast<const std::int16_t*>(data), bytes / kFrameBytes * 2});
      silentTicks_ = 0;
      silentTicksAllowed_ = kSilentTicksAllowed;
    }
    pa_stream_drop(stream_);
  }
}

void PulseStream::StreamChanged() {
  server_.Wake();
  if (PA_STREAM_IS_GOOD(pa_stream_get_state(stream_)) || !server_.IsConnected()) return;
  FailUnplugged();
}

void PulseStream::ServerEvent(pa_subscription_event_type_t type, std::uint32_t index) {
  const auto facility = type & PA_SUBSCRIPTION_EVENT_FACILITY_MASK;
  const auto what = type & PA_SUBSCRIPTION_EVENT_TYPE_MASK;
  const bool isSource = facility == PA_SUBSCRIPTION_EVENT_SOURCE && index == sourceIndex_;
  const bool isRecording = facility == PA_SUBSCRIPTION_EVENT_SOURCE_OUTPUT && stream_ != nullptr &&
                           index == pa_stream_get_index(stream_);
  if (isSource && what == PA_SUBSCRIPTION_EVENT_REMOVE) {
    FailUnplugged();
  } else if (isSource && what == PA_SUBSCRIPTION_EVENT_CHANGE) {
    AskForSource();
  } else if (isRecording && what == PA_SUBSCRIPTION_EVENT_CHANGE) {
    recordingChanged_ = true;
  }
}

void PulseStream::AskForSource() {
  const auto answer = [](pa_context*, const pa_source_info* info, int, void* self) {
    if (info != nullptr) static_cast<PulseStream*>(self)->SourceChanged(*info);
  };
  if (pa_operation* operation =
          pa_context_get_source_info_by_index(server_.Context(), sourceIndex_, answer, this))
    pa_operation_unref(operation);
}

void PulseStream::AskForRecording() {
  const auto answer = [](pa_context*, const pa_source_output_info* info, int, void* self) {
    if (info != nullptr) static_cast<PulseStream*>(self)->RecordingChanged(*info);
  };
  if (pa_operation* operation =
          pa_context_get_source_output_info(server_.Context(), pa_stream_get_index(stream_), answer, this))
    pa_operation_unref(operation);
}

void PulseStream::SourceChanged(const pa_source_info& info) {
  const PulseSource source = ToPulseSource(info);
  SetWarning(sourceWarning_, LevelWarning("the sound input " + Quoted(), source.IsMuted, source.Volume));
  if (watch_ == nullptr || source.RateHz == request_.RateHz)
    return;  // while opening, the rate may still settle
  Fail("The sound input " + Quoted() + " was switched to " + std::to_string(source.RateHz) +
           " Hz by another program",
       "Close that program, then press Start.");
}

void PulseStream::RecordingChanged(const pa_source_output_info& info) {
  if (info.has_volume == 0) return;
  SetWarning(recordingWarning_, LevelWarning("the recording from " + Quoted(), info.mute != 0, info.volume));
}

void PulseStream::WatchTick(pa_time_event* event) {
  if (++silentTicks_ >= silentTicksAllowed_) {
    Fail("The sound input " + Quoted() + " has sent nothing for " +
             std::to_string(silentTicks_ / kTicksPerSecond) + " seconds",
         "Check that no other program holds it and that the sound server runs, then press Start.");
    return;
  }
  // Not at each event: a session manager sets the volume of a new recording in steps, from 0 on.
  if (std::exchange(recordingChanged_, false)) AskForRecording();
  pa_context_rttime_restart(server_.Context(), event,
                            pa_rtclock_now() + std::chrono::microseconds(kWatchTick).count());
}

BlockState PulseStream::TakeBlock(std::span<std::int16_t> block) {
  if (failed_.load(std::memory_order_acquire)) return BlockState::Failed;
  return ring_.TakeBlock(block) ? BlockState::Done : BlockState::Pending;
}

void PulseStream::Fail(std::string cause, std::string advice) {
  const std::lock_guard lock(textMutex_);
  if (failed_.load(std::memory_order_relaxed)) return;  // the first cause is the one to tell
  cause_ = std::move(cause);
  advice_ = std::move(advice);
  failed_.store(true, std::memory_order_release);
}

void PulseStream::FailUnplugged() {
  // The server kills the recording first and reports the vanished source after it, or the other way round.
  Fail("The sound input " + Quoted() + " was unplugged, or the sound server closed it",
       "Plug it in again or choose another input, then press Start.");
}

void PulseStream::SetWarning(std::string& slot, std::string text) {
  const std::lock_guard lock(textMutex_);
  slot = std::move(text);
}

std::string PulseStream::Cause() const {
  const std::lock_guard lock(textMutex_);
  return cause_;
}

std::string PulseStream::Failure() const {
  const std::lock_guard lock(textMutex_);
  return cause_ + ". " + advice_;
}

std::string PulseStream::Warning() const {
  const std::lock_guard lock(textMutex_);
  return sourceWarning_.empty() ? recordingWarning_ : sourceWarning_;
}

}  // namespace spectrino
