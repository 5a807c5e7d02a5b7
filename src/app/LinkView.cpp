#include "app/LinkView.h"

#include <algorithm>
#include <utility>

#include "rig/LinkWatch.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

// The slowest source, 65536 points at 11025 Hz, brings a line each 1.5 s.
constexpr auto kLinesMissing = 3s;
// Of a link that is known to be broken: the lines of a radio come ten times a second or more.
constexpr auto kLastLine = 500ms;

std::string NameOf(const RadioKit& kit, const std::string& otherwise) {
  const std::string model = kit.Model();
  return model.empty() ? otherwise : model;
}

}  // namespace

std::string WatchedLink::Text(LinkHealth::Time now) const {
  if (!Bad()) return {};
  return Health.State == LinkState::Connecting ? "Connecting to " + Name + " again"
                                               : HealthText(Health, Name, now);
}

void LinkView::RunChanged() {
  source_ = {};
  control_.reset();
  // A run that has just begun has no line yet, and is not late with it.
  hiddenUntil_ = time_.Now();
  told_.clear();
  news_.clear();
  Look();
}

void LinkView::LookAtLinks() {
  const Route& way = cycle_.View().Way;
  const std::string& name = cycle_.View().SourceName;
  const bool running = cycle_.Running();
  source_.Health = cycle_.Health();
  source_.Name = way.Source != nullptr ? NameOf(*way.Source, name) : '"' + name + '"';
  source_.Heard = running && (source_.Heard || source_.Health.State == LinkState::Live);
  if (!running || way.Control == nullptr || way.Control == way.Source || cycle_.Backend() == nullptr) {
    control_.reset();
    return;
  }
  if (!control_) control_.emplace();
  control_->Health = way.Control->Health();
  control_->Name = NameOf(*way.Control, "The radio");
  control_->Heard = control_->Heard || control_->Health.State == LinkState::Live;
}

// A radio whose lines are lost may take commands all the same.
bool LinkView::CommandsStale() const {
  const RadioKit* kit = cycle_.View().Way.Control;
  return kit == nullptr || kit->CommandHealth().State != LinkState::Live;
}

RigBackend* LinkView::FilterBackend() const {
  const Route& way = cycle_.View().Way;
  if (way.Source == nullptr || way.Source == way.Control) return Backend();
  return way.Source->CommandHealth().State == LinkState::Live ? &way.Source->Backend() : nullptr;
}

bool LinkView::LinesStopped(LinkHealth::Time now) const {
  const auto arrived = cycle_.View().Line.Arrived;
  // A layout makes nobody hear a radio that is gone.
  if (source_.Bad()) return now - arrived > kLastLine;
  return now - std::max(arrived, hiddenUntil_) > kLinesMissing;
}

/// What was stale when a run ended is not news because another begins.
void LinkView::LookAtRadio() {
  const bool heard = control_ ? control_->Heard : source_.Heard || !CommandsStale();
  const bool waits = radioStale_ && !(cycle_.Running() && heard);
  radioStale_ = waits || (control_ ? control_->Bad() : source_.Bad() && CommandsStale());
}

void LinkView::LookAtLines(LinkHealth::Time now) {
  const RunView& run = cycle_.View();
  if (source_.Health.State != LinkState::Live) deafUntil_ = now;
  const bool late = now - std::max(run.Line.Arrived, std::max(hiddenUntil_, deafUntil_)) > kLinesMissing;
  linesMissing_ = run.Running && run.Link != nullptr && source_.Health.State == LinkState::Live && late;
  // After a run its last picture stays as it was.
  if (!run.Running) return;
  stoppedAt_.reset();
  if (run.HasLine() && LinesStopped(now)) stoppedAt_ = run.Line.TakenUtc;
}

void LinkView::Look() {
  const LinkHealth::Time now = time_.Now();
  LookAtLinks();
  const RadioLink* link = cycle_.View().Link;
  const bool paused = link != nullptr && link->Paused() && !source_.Bad();
  if (state_.WindowMinimized || state_.ResizeInProgress || paused) hiddenUntil_ = now;
  LookAtRadio();
  LookAtLines(now);

  text_ = source_.Text(now);
  if (linesMissing_) {
    const std::string& why = source_.Health.Why;
    text_ = why.empty() ? source_.Name + " sends no spectrum: is its scope on?" : why;
  }
  server_ = serverTrouble_();
  for (const std::string& other : {control_ ? control_->Text(now) : std::string(), server_})
    if (!other.empty()) text_ += (text_.empty() ? "" : "\n") + other;
  TellNews();
}

// By kind: a text whose seconds count would be said each second.
void LinkView::TellNews() {
  const auto kind = [](const WatchedLink& link) {
    return link.Bad() ? link.Name + std::to_string(static_cast<int>(link.Health.State)) : std::string();
  };
  std::string trouble =
      kind(source_) + (linesMissing_ ? "?" : "") + (control_ ? kind(*control_) : "") + server_;
  if (trouble == told_) return;
  told_ = std::move(trouble);
  news_ = text_.empty() ? troubled_ + " is heard again" : text_;
  if (source_.Bad() || linesMissing_)
    troubled_ = source_.Name;
  else if (control_ && control_->Bad())
    troubled_ = control_->Name;
  else if (!server_.empty())
    troubled_ = "rigctld";
}

}  // namespace spectrino
