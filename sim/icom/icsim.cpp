// spectrino-icsim: a simulated Icom on a pseudo-terminal, until SIGTERM.
// Not the radio: see IcomRadio.

#include <csignal>
#include <cstdio>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "sim/icom/IcomSimPort.h"
#include "sim/icom/IcsimOptions.h"

namespace {

using spectrino::IcomSimFaults;
using spectrino::IcomSimPort;
using spectrino::IcsimOptions;
using spectrino::SimTime;

constexpr long kPassNs = 2'000'000;

/// What is due by the clock, not by count.
class Schedule {
 public:
  Schedule(const IcsimOptions& options, SimTime start) : options_(options), start_(start) {}

  /// False when the port could not be made again.
  [[nodiscard]] bool Apply(IcomSimPort& port, SimTime now) {
    const auto reached = [&](double seconds) {
      return seconds >= 0 && std::chrono::duration<double>(now - start_).count() >= seconds;
    };
    if (!silenced_ && reached(options_.SilenceAtS)) {
      IcomSimFaults faults = options_.Setup.Faults;
      faults.Silent = true;
      port.Radio().SetFaults(faults);
      silenced_ = true;
    }
    if (!unplugged_ && reached(options_.UnplugAtS)) {
      port.Unplug();
      unplugged_ = true;
    }
    if (replugged_ || !unplugged_ || !reached(options_.ReplugAtS)) return true;
    replugged_ = true;
    std::string reason;
    return port.Open(reason);
  }

 private:
  const IcsimOptions& options_;
  SimTime start_;
  bool silenced_ = false;
  bool unplugged_ = false;
  bool replugged_ = false;
};

int Serve(const IcsimOptions& options, const sigset_t& endSignals) {
  const SimTime start = std::chrono::steady_clock::now();
  IcomSimPort port(options.Setup, options.LinkPath, start);
  std::string reason;
  if (!port.Open(reason)) {
    std::fprintf(stderr, "spectrino-icsim: %s\n", reason.c_str());
    return 3;
  }
  std::puts("READY");
  std::fflush(stdout);
  Schedule schedule(options, start);
  const timespec pass{0, kPassNs};
  // The wait for a signal is the wait between two passes.
  while (::sigtimedwait(&endSignals, nullptr, &pass) < 0) {
    const SimTime now = std::chrono::steady_clock::now();
    if (!schedule.Apply(port, now)) return 3;
    port.Process(now);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  sigset_t endSignals;
  sigemptyset(&endSignals);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&endSignals, signal);
  sigprocmask(SIG_BLOCK, &endSignals, nullptr);

  IcsimOptions options;
  std::string trouble;
  if (!spectrino::ReadIcsimOptions({argv + 1, argv + argc}, options, trouble)) {
    std::fprintf(stderr, "spectrino-icsim: %s\n%s", trouble.c_str(),
                 std::string(spectrino::kIcsimUsage).c_str());
    return 2;
  }
  if (options.HelpWanted) {
    std::fputs(std::string(spectrino::kIcsimUsage).c_str(), stdout);
    return 0;
  }
  return Serve(options, endSignals);
}
