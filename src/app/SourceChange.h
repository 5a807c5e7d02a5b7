// Another source while a run is on: that run ends and one on the new source begins, without a question.
// What a choice stores is SourceBox's business; opens and closes nothing itself.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

#include "app/SourceBox.h"
#include "run/RunCycle.h"

namespace spectrino {

class SourceChange final : public QObject {
 public:
  /// All outlive it.
  struct Parts {
    RunCycle& Cycle;
    SourceBox& Sources;
    std::function<void()> Chosen;  ///< the choice was stored: shows it, before anything is opened with it
    std::function<void()> Start;   ///< as the button does
  };
  explicit SourceChange(Parts parts);

  /// What stands at index of the list. During a run, and while one begins, the chosen one is left alone, and
  /// of choices that come quickly the last one is started.
  void Choose(int index);
  /// As Choose, and starts in any case.
  void StartWith(int index);
  /// The same for the first source of a kind; nothing happens when there is none.
  void StartWith(SourceKind kind);
  /// Ends a run that is on and starts with the settings as they are now.
  void StartAgain();
  /// A run began or ended.
  void RunChanged();
  /// Start and Stop of the operator go before a start that is still to come.
  void Forget();

 private:
  [[nodiscard]] bool On() const { return parts_.Cycle.Running() || parts_.Cycle.Starting(); }
  void Take(int index);

  Parts parts_;
  QTimer start_;         ///< from the event loop: a Start that gives up has returned by then
  bool wanted_ = false;  ///< a start is still to come
};

}  // namespace spectrino
