#include "adapters/sound/PulseInput.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <string_view>

#include "adapters/sound/PulseServer.h"
#include "adapters/sound/PulseStream.h"

namespace spectrino {
namespace {

constexpr std::chrono::seconds kListPatience{2};
constexpr std::string_view kIdPrefix = "pulse:";

std::vector<PulseSource> AskForSources() {
  const PulseServer::Deadline deadline = std::chrono::steady_clock::now() + kListPatience;
  PulseServer server;
  const PulseServer::Lock lock(server);
  if (!server.Connect(deadline)) return {};
  return server.Sources(deadline);
}

}  // namespace

std::vector<SoundDevice> PulseInput::Devices() {
  std::vector<PulseSource> sources = AskForSources();
  std::ranges::stable_partition(sources, [](const PulseSource& source) { return !source.IsMonitor; });
  std::map<std::string, int> descriptions;
  for (const PulseSource& source : sources) ++descriptions[source.Description];

  std::vector<SoundDevice> devices;
  for (const PulseSource& source : sources) {
    SoundDevice device;
    device.Name = source.Description;
    if (descriptions[source.Description] > 1) device.Name += " (" + source.Name + ")";
    // One channel is no I/Q.
    device.HasFormats = source.Channels >= 2;
    device.StableId = std::string(kIdPrefix) + source.Name;
    device.UsualRateHz = source.RateHz;
    devices.push_back(std::move(device));
  }
  return devices;
}

std::unique_ptr<SoundStream> PulseInput::Open(const SoundDevice& device, int rateHz, int blockFrames,
                                              std::string& reason) {
  if (!device.StableId.starts_with(kIdPrefix)) {
    reason = "\"" + device.Name + "\" is no input of the sound server.";
    return nullptr;
  }
  if (rateHz <= 0 || rateHz > static_cast<int>(PA_RATE_MAX) || blockFrames <= 0) {
    reason = "The sound server cannot record at " + std::to_string(rateHz) + " Hz.";
    return nullptr;
  }
  auto stream = std::make_unique<PulseStream>(
      PulseRequest{device.StableId.substr(kIdPrefix.size()), device.Name, rateHz, blockFrames});
  if (!stream->Open(reason)) return nullptr;
  if (realTime_ && !stream->RaiseThreadPriority() && !refusalLogged_.exchange(true)) {
    notifier_.Log(LogArea::Audio,
                  "Real-time scheduling of the capture was refused; it goes on with ordinary priority. "
                  "To allow it, add the user to a group with an rtprio limit (often \"audio\").");
  }
  return stream;
}

}  // namespace spectrino
