#include "host/BridgeLink.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "state/Val.h"

namespace spectrino {
namespace {

constexpr const char* kNotRunning =
    "                     LP-Bridge is not running.\nClose Spectrino, start LP-Bridge, then start Spectrino.";
constexpr const char* kNotRunningCure =
    "Started later it is followed too. If nothing of the kind tells your radio's frequency, choose another "
    "CAT "
    "Control in Setup.";
constexpr double kMostHz = 99'999'999'999.0;
constexpr double kMostBesideHz = 100e6;

/// Nothing is not known; everything else begins with a number that a radio can have.
bool IsTaken(BridgeItem item, std::string_view text) {
  text = Trim(text);
  if (item == BridgeItem::Trouble || text.empty()) return true;
  const std::string_view digits = text.substr(text.find_first_not_of("+-.") == 1 ? 1 : 0);
  if (digits[0] < '0' || digits[0] > '9') return false;
  const double hz = Val(text);
  if (item == BridgeItem::VfoAHz || item == BridgeItem::VfoBHz) return hz >= 0 && hz <= kMostHz;
  const bool signless = item == BridgeItem::Bandwidth || item == BridgeItem::Bandwidth2;
  return hz >= (signless ? 0 : -kMostBesideHz) && hz <= kMostBesideHz;
}

}  // namespace

BridgeLink::BridgeLink(BridgePort& port, Notifier& user, const Clock& clock)
    : port_(port), user_(user), clock_(clock) {
  port_.Found = [this] {
    found_ = answered_ = true;
    why_.clear();
    user_.Log(LogArea::Host, "the bridge is there");
  };
  port_.Missing = [this](const std::string& why) { Missed(why); };
  port_.Told = [this](BridgeItem item, const std::string& text) { Take(item, text); };
  port_.Refused = [this](const std::string& why) { user_.Log(LogArea::Host, "command refused: " + why); };
}

BridgeLink::~BridgeLink() {
  CloseDdeLink();
  port_.Found = nullptr;
  port_.Missing = nullptr;
  port_.Told = nullptr;
  port_.Refused = nullptr;
}

void BridgeLink::OpenDdeLink() {
  if (active_) return;
  active_ = true;
  found_ = answered_ = logged_ = false;
  texts_ = {};
  since_ = clock_.Now();
  port_.Open();
}

void BridgeLink::CloseDdeLink() {
  if (!active_) return;
  active_ = found_ = false;
  port_.Close();
}

void BridgeLink::Take(BridgeItem item, const std::string& text) {
  if (IsTaken(item, text)) {
    texts_[static_cast<std::size_t>(item)] = text;
    if (item != BridgeItem::Trouble) since_ = clock_.Now();
  } else if (!std::exchange(logged_, true)) {
    user_.Log(LogArea::Host, std::string("the bridge told what no radio has: ") +
                                 kBridgeItems[static_cast<std::size_t>(item)] + " \"" + text + '"');
  }
}

void BridgeLink::Missed(const std::string& why) {
  found_ = false;
  why_ = why;
  user_.Log(LogArea::Host, why);
  // What it told last is no longer so.
  texts_ = {};
  if (!std::exchange(answered_, true))
    user_.ShowMessage("Spectrino", kNotRunning, Severity::Exclamation, Cure::OpenSetup(kNotRunningCure));
}

LinkHealth BridgeLink::Health() const {
  if (!active_) return {};
  const std::string& trouble = Text(BridgeItem::Trouble);
  if (found_ && !trouble.empty())
    return {.State = LinkState::Lost, .Since = since_, .Why = "LP-Bridge: " + trouble};
  if (found_) return {.State = LinkState::Live, .Since = since_};
  if (!answered_) return {.State = LinkState::Connecting, .Since = since_};
  return {.State = LinkState::Lost,
          .Since = since_,
          .Why = "LP-Bridge: " + why_ + " It is followed as soon as it runs and answers"};
}

void BridgeLink::BridgeSetBand(int band) {
  if (band < 0 || band > 99) return;
  Poke((band < 10 ? "BN0" : "BN") + std::to_string(band) + ";");
}

void BridgeLink::BridgeSetFrequency(double freqMHz, int which) {
  const double hz = std::nearbyint(freqMHz * 1e6);
  if (!(hz > 0) || hz > kMostHz) return;
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%s%011.0f;", which == 2 ? "FB" : "FA", hz);
  Poke(text.data());
}

void BridgeLink::Poke(const std::string& txtLPB_LINK) {
  if (active_) port_.Command(txtLPB_LINK);
}

}  // namespace spectrino
