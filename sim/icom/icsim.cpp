// spectrino-icsim: a simulated Icom on a pseudo-terminal, until SIGTERM.
// Not the radio: see IcomRadio.

#include <csignal>
#include <cstdio>
#include <ctime>
#include <string>

#include "sim/icom/IcomSimPort.h"
#include "sim/icom/IcsimOptions.h"

namespace {

using spectrino::IcomSimFaults;
using spectrino::IcomSimPort;
using spectrino::IcsimEvent;
using spectrino::IcsimOptions;
using spectrino::SimTime;

constexpr long kPassNs = 2'000'000;

/// False when the port could not be made again.
bool Apply(IcsimEvent event, const IcomSimFaults& lasting, IcomSimPort& port) {
  IcomSimFaults faults = port.Radio().Faults();
  std::string reason;
  switch (event) {
    case IcsimEvent::Silence:
      faults.Silent = true;
      break;
    case IcsimEvent::WrongBaud:
      faults.WrongBaud = true;
      break;
    case IcsimEvent::Refusal:
      faults.Refusing = true;
      break;
    case IcsimEvent::Heal:
      faults = lasting;
      break;
    case IcsimEvent::ScopeOff:
      port.Radio().StopScopeData();
      break;
    case IcsimEvent::PowerOff:
    case IcsimEvent::PowerOn:
      port.Radio().SwitchPower(event == IcsimEvent::PowerOn);
      break;
    case IcsimEvent::Unplug:
      port.Unplug();
      break;
    case IcsimEvent::Replug:
      return port.Open(reason);
  }
  port.Radio().SetFaults(faults);
  return true;
}

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
  auto next = options.Events.begin();
  const timespec pass{0, kPassNs};
  // The wait for a signal is the wait between two passes.
  while (::sigtimedwait(&endSignals, nullptr, &pass) < 0) {
    const SimTime now = std::chrono::steady_clock::now();
    const double seconds = std::chrono::duration<double>(now - start).count();
    for (; next != options.Events.end() && next->AtS <= seconds; ++next) {
      if (!Apply(next->Event, options.Setup.Faults, port)) return 3;
    }
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
