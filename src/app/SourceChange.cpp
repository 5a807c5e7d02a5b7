#include "app/SourceChange.h"

#include <utility>

namespace spectrino {

SourceChange::SourceChange(Parts parts) : parts_(std::move(parts)) {
  start_.setSingleShot(true);
  connect(&start_, &QTimer::timeout, this, [this] {
    if (wanted_ && !On()) parts_.Start();
  });
}

void SourceChange::Choose(int index) {
  const bool on = On() || wanted_;
  if (on && !parts_.Sources.IsAnother(index)) return;
  Take(index);
  if (on) StartAgain();
}

void SourceChange::StartWith(int index) {
  if (parts_.Sources.IsAnother(index)) Take(index);
  StartAgain();
}

void SourceChange::StartWith(SourceKind kind) {
  if (const std::optional<int> index = parts_.Sources.FirstOf(kind)) StartWith(*index);
}

// The run ends before the settings that it lives on change.
void SourceChange::Take(int index) {
  if (On()) parts_.Cycle.Stop();
  if (parts_.Sources.Choose(index)) parts_.Chosen();
}

void SourceChange::StartAgain() {
  wanted_ = true;
  if (On()) parts_.Cycle.Stop();
  RunChanged();
}

void SourceChange::RunChanged() {
  if (wanted_ && !On()) start_.start(0);
}

void SourceChange::Forget() {
  wanted_ = false;
  start_.stop();
}

}  // namespace spectrino
