#include "adapters/sound/PulseServer.h"

#include <sched.h>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace spectrino {
namespace {

std::optional<int> NumberProperty(const pa_proplist* properties, const char* key) {
  const char* text = properties == nullptr ? nullptr : pa_proplist_gets(properties, key);
  if (text == nullptr) return std::nullopt;
  int number = 0;
  const char* end = text + std::strlen(text);
  const auto [next, error] = std::from_chars(text, end, number);
  if (error != std::errc{} || next != end || number < 0) return std::nullopt;
  return number;
}

pa_usec_t MicrosecondsUntil(PulseServer::Deadline deadline) {
  const auto left =
      std::chrono::duration_cast<std::chrono::microseconds>(deadline - std::chrono::steady_clock::now());
  return static_cast<pa_usec_t>(std::max<std::int64_t>(left.count(), 0));
}

void AddSource(pa_context*, const pa_source_info* info, int, void* sources) {
  if (info != nullptr) static_cast<std::vector<PulseSource>*>(sources)->push_back(ToPulseSource(*info));
}

}  // namespace

PulseSource ToPulseSource(const pa_source_info& info) {
  PulseSource source;
  source.Name = info.name;
  source.Description = info.description != nullptr ? info.description : info.name;
  source.Index = info.index;
  source.RateHz = static_cast<int>(info.sample_spec.rate);
  source.Channels = info.sample_spec.channels;
  source.IsMonitor = info.monitor_of_sink != PA_INVALID_INDEX;
  source.IsMuted = info.mute != 0;
  source.Volume = info.volume;
  source.AlsaCard = NumberProperty(info.proplist, "alsa.card");
  source.AlsaDevice = NumberProperty(info.proplist, "alsa.device");
  return source;
}

PulseServer::PulseServer() : loop_(pa_threaded_mainloop_new()) {
  pa_threaded_mainloop_set_name(loop_, "sound");
}

PulseServer::~PulseServer() {
  {
    const Lock lock(*this);
    Disconnect();
  }
  pa_threaded_mainloop_stop(loop_);
  pa_threaded_mainloop_free(loop_);
}

bool PulseServer::Connect(Deadline deadline) {
  if (pa_threaded_mainloop_start(loop_) != 0) return false;
  pa_proplist* properties = pa_proplist_new();
  pa_proplist_sets(properties, PA_PROP_APPLICATION_ID, "org.spectrino.Spectrino");
  context_ = pa_context_new_with_proplist(Api(), "Spectrino", properties);
  pa_proplist_free(properties);
  pa_context_set_state_callback(
      context_, [](pa_context*, void* self) { static_cast<PulseServer*>(self)->ContextChanged(); }, this);
  if (pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) return false;
  return WaitUntil([this] { return IsConnected(); }, deadline);
}

void PulseServer::Disconnect() {
  if (context_ == nullptr) return;
  lost_ = nullptr;
  pa_context_set_state_callback(context_, nullptr, nullptr);
  pa_context_set_subscribe_callback(context_, nullptr, nullptr);
  pa_context_disconnect(context_);  // also drops every question that is still open
  pa_context_unref(context_);
  context_ = nullptr;
}

bool PulseServer::IsConnected() const {
  return context_ != nullptr && pa_context_get_state(context_) == PA_CONTEXT_READY;
}

void PulseServer::ContextChanged() {
  Wake();
  if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)) && lost_) lost_();
}

bool PulseServer::WaitUntil(const std::function<bool()>& done, Deadline deadline) {
  struct Alarm {
    PulseServer& Server;
    bool HasRung = false;
  } alarm{*this};
  pa_time_event* event = pa_context_rttime_new(
      context_, pa_rtclock_now() + MicrosecondsUntil(deadline),
      [](pa_mainloop_api*, pa_time_event*, const timeval*, void* data) {
        static_cast<Alarm*>(data)->HasRung = true;
        static_cast<Alarm*>(data)->Server.Wake();
      },
      &alarm);
  while (!done() && !alarm.HasRung && PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)))
    pa_threaded_mainloop_wait(loop_);
  Api()->time_free(event);
  return done();
}

bool PulseServer::Finish(pa_operation* operation, Deadline deadline) {
  if (operation == nullptr) return false;
  pa_operation_set_state_callback(
      operation, [](pa_operation*, void* self) { static_cast<PulseServer*>(self)->Wake(); }, this);
  const bool ended =
      WaitUntil([=] { return pa_operation_get_state(operation) != PA_OPERATION_RUNNING; }, deadline);
  // A late answer would be written to a result that is gone by then.
  if (!ended) pa_operation_cancel(operation);
  const bool done = ended && pa_operation_get_state(operation) == PA_OPERATION_DONE;
  pa_operation_unref(operation);
  return done;
}

std::vector<PulseSource> PulseServer::Sources(Deadline deadline) {
  std::vector<PulseSource> sources;
  if (!Finish(pa_context_get_source_info_list(context_, AddSource, &sources), deadline)) sources.clear();
  return sources;
}

std::optional<PulseSource> PulseServer::FindSource(const std::string& name, Deadline deadline) {
  std::vector<PulseSource> sources;
  const bool answered =
      Finish(pa_context_get_source_info_by_name(context_, name.c_str(), AddSource, &sources), deadline);
  if (!answered || sources.empty()) return std::nullopt;
  return sources.front();
}

bool PulseServer::RaiseThreadPriority(Deadline deadline) {
  struct Request {
    PulseServer& Server;
    bool IsDone = false;
    bool IsGranted = false;
  } request{*this};
  // The library does not hand out its thread, but runs this on it.
  pa_defer_event* event = Api()->defer_new(
      Api(),
      [](pa_mainloop_api* api, pa_defer_event* self, void* data) {
        auto& asked = *static_cast<Request*>(data);
        // The lowest real-time priority: ahead of every ordinary program, behind the sound server itself.
        const sched_param lowest{.sched_priority = sched_get_priority_min(SCHED_FIFO)};
        asked.IsGranted = sched_setscheduler(0, SCHED_FIFO | SCHED_RESET_ON_FORK, &lowest) == 0;
        asked.IsDone = true;
        api->defer_enable(self, 0);
        asked.Server.Wake();
      },
      &request);
  WaitUntil([&] { return request.IsDone; }, deadline);
  Api()->defer_free(event);
  return request.IsGranted;
}

}  // namespace spectrino
