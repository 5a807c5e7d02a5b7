// One connection to the sound server, with its own event thread, and the questions asked over it.
// Not a stream: PulseStream records over a connection of its own.
#pragma once

#include <pulse/pulseaudio.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace spectrino {

/// A source as the server reports it.
struct PulseSource {
  std::string Name;         ///< the server's own, stable name
  std::string Description;  ///< as the desktop shows it
  std::uint32_t Index = PA_INVALID_INDEX;
  int RateHz = 0;
  int Channels = 0;
  bool IsMonitor = false;  ///< the output of this machine played back, not an input
  bool IsMuted = false;
  pa_cvolume Volume{};
  std::optional<int> AlsaCard;  ///< card and device of /proc/asound, for a card of this machine
  std::optional<int> AlsaDevice;
};

[[nodiscard]] PulseSource ToPulseSource(const pa_source_info& info);

/// Every member function but the constructor and destructor needs the Lock held. None waits beyond its
/// deadline.
class PulseServer {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  /// Keeps the event thread out of everything that both sides touch.
  class Lock {
   public:
    explicit Lock(const PulseServer& server) : loop_(server.loop_) { pa_threaded_mainloop_lock(loop_); }
    ~Lock() { pa_threaded_mainloop_unlock(loop_); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

   private:
    pa_threaded_mainloop* loop_;
  };

  PulseServer();
  ~PulseServer();  // without the Lock; never waits for the server
  PulseServer(const PulseServer&) = delete;
  PulseServer& operator=(const PulseServer&) = delete;

  /// Connects to the server of this session without starting one. False when none answers in time.
  [[nodiscard]] bool Connect(Deadline deadline);
  void Disconnect();
  [[nodiscard]] bool IsConnected() const;

  /// In the server's order; empty when it does not answer in time.
  [[nodiscard]] std::vector<PulseSource> Sources(Deadline deadline);
  [[nodiscard]] std::optional<PulseSource> FindSource(const std::string& name, Deadline deadline);

  /// Puts the event thread under real-time scheduling. False when the system refuses.
  [[nodiscard]] bool RaiseThreadPriority(Deadline deadline);

  /// Lets the event thread run until done() holds, the connection ends or the time is up; returns done().
  /// Only what calls Wake() gets the condition looked at again.
  bool WaitUntil(const std::function<bool()>& done, Deadline deadline);
  void Wake() { pa_threaded_mainloop_signal(loop_, 0); }

  /// Called on the event thread when an established connection ends.
  void SetLostHandler(std::function<void()> handler) { lost_ = std::move(handler); }

  [[nodiscard]] pa_context* Context() const { return context_; }
  [[nodiscard]] pa_mainloop_api* Api() const { return pa_threaded_mainloop_get_api(loop_); }

 private:
  bool Finish(pa_operation* operation, Deadline deadline);
  void ContextChanged();

  pa_threaded_mainloop* loop_;
  pa_context* context_ = nullptr;
  std::function<void()> lost_;
};

}  // namespace spectrino
