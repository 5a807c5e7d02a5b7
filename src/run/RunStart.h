// Opens and closes what a run needs: the host program, the sound input or the radio. Tells the user what
// keeps it from starting. Takes no pass.
#pragma once

#include <functional>
#include <optional>

#include "capture/DeviceList.h"
#include "platform/Clock.h"
#include "platform/EventPump.h"
#include "platform/Notifier.h"
#include "run/AudioKeeper.h"
#include "run/RunView.h"
#include "run/Session.h"
#include "settings/SettingsStore.h"
#include "state/FrameSink.h"
#include "state/StageTimes.h"

namespace spectrino {

/// The surroundings of a run; all outlive it.
struct RunParts {
  DeviceList& Devices;
  FrameSink& Sink;
  SettingsStore& Store;
  Notifier& User;
  EventPump& Pump;
  const Clock& Time;
  StageTimes& Times;
  RigRouter Router;
};

class RunStart {
 public:
  /// stopped: Stop was called meanwhile; waiting for links keeps events flowing.
  RunStart(Session& session, const RunParts& parts, RunView& run, std::function<bool()> stopped);

  /// Takes the choices of the settings over for this run.
  void Choose();
  /// Which radio's lines the next run will show, as the settings are now.
  void FindNextLink();
  /// Looks for the host program where they need it; events flow meanwhile. A missing one does not keep a run
  /// from starting.
  void OpenHost();
  /// Opens the source chosen. False when there is no run; the user has been told then.
  [[nodiscard]] bool Open();
  /// The sound input anew, by the plan as it is now. False as Open.
  [[nodiscard]] bool ReopenAudio();
  /// Closes what is open, in any state.
  void Close();

  /// What rate, size and zoom the settings come to now.
  [[nodiscard]] ZoomPlan PlanFor(const PanSettings& settings) const;
  [[nodiscard]] CatControl Control() const { return control_; }
  /// Null where nothing carries frequencies, and where the host program was not found.
  [[nodiscard]] RigBackend* Backend() const;
  /// A host program was to carry this run's frequencies, and was not found.
  [[nodiscard]] bool HostMissing() const;
  [[nodiscard]] SpectrumSource* Source() const { return source_; }
  [[nodiscard]] AudioKeeper& Audio() { return audio_; }
  [[nodiscard]] const AudioKeeper& Audio() const { return audio_; }

 private:
  /// Where no other way is there the source's own dial carries the frequency; false where it has none.
  [[nodiscard]] bool TakeDial();
  [[nodiscard]] bool OpenAudio();
  [[nodiscard]] CaptureSettings Capture() const;
  void TellOpenFailure(const std::string& reason);
  [[nodiscard]] bool OpenRadio();

  Session& session_;
  RunParts parts_;
  RunView& run_;
  std::function<bool()> stopped_;
  AudioKeeper audio_;
  CatControl control_ = CatControl::HostIf;
  std::optional<ChosenSource> chosen_;
  SpectrumSource* source_ = nullptr;
  bool hostOpen_ = false;
};

}  // namespace spectrino
