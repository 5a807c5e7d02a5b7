#include "sim/bridge/BridgedRadio.h"

#include <string>
#include <utility>
#include <vector>

namespace spectrino {
namespace {

struct Band {
  qint64 LowHz;
  qint64 HighHz;
  qint64 FirstHz;  ///< where "BN" goes before anybody was there
};

// The numbers of "BN": 00 is 160 m, 10 is 6 m, 60 m counted.
constexpr std::array<Band, 11> kBands{{{1'800'000, 2'000'000, 1'840'000},
                                       {3'500'000, 4'000'000, 3'573'000},
                                       {5'330'000, 5'407'000, 5'357'000},
                                       {7'000'000, 7'300'000, 7'074'000},
                                       {10'100'000, 10'150'000, 10'136'000},
                                       {14'000'000, 14'350'000, 14'074'000},
                                       {18'068'000, 18'168'000, 18'100'000},
                                       {21'000'000, 21'450'000, 21'074'000},
                                       {24'890'000, 24'990'000, 24'915'000},
                                       {28'000'000, 29'700'000, 28'074'000},
                                       {50'000'000, 54'000'000, 50'313'000}}};

}  // namespace

int ModeCodeOf(const QString& hamlibMode) {
  static const std::vector<std::pair<QString, int>> codes{
      {"LSB", 1}, {"USB", 2},  {"CW", 3},     {"FM", 4},    {"WFM", 4},    {"AM", 5},
      {"CWR", 7}, {"RTTY", 6}, {"PKTUSB", 6}, {"RTTYR", 9}, {"PKTLSB", 9}, {"FMN", 4}};
  for (const auto& [name, code] : codes) {
    if (name == hamlibMode) return code;
  }
  return 0;
}

BridgedRadio::BridgedRadio(BridgeService& service, RadioFollower& radio, SettingsStore& store)
    : service_(service), radio_(radio), store_(store) {
  for (std::size_t i = 0; i < kBands.size(); ++i) lastHz_[i] = kBands[i].FirstHz;
  radio_.Told = [this](const FollowedRadio& now) { Show(now); };
  service_.Requested = [this](const BridgeRequest& request) { Do(request); };
}

void BridgedRadio::Show(const FollowedRadio& now) {
  if (now == shown_) return;
  shown_ = now;
  Remember(now.VfoAHz);
  // The bus first: whoever follows waits for the frequency, and a file may have to wait for a lock.
  service_.Put("Trouble", now.Trouble);
  service_.Put("VfoAHz", QString::number(now.VfoAHz));
  service_.Put("VfoBHz", QString::number(now.VfoBHz));
  service_.Put("Bandwidth", QString::number(now.BandwidthHz));
  if (now.Mode.isEmpty()) return;
  // Without a mode nobody could step through a band.
  const std::vector<KeyValue> pan{{"MD", std::to_string(ModeCodeOf(now.Mode))},
                                  {"FT", now.Split ? "1" : "0"},
                                  {"FA", std::to_string(now.VfoAHz)}};
  store_.SaveSettings("LP-Bridge", "PAN", pan);
}

void BridgedRadio::Remember(qint64 hz) {
  for (std::size_t i = 0; i < kBands.size(); ++i) {
    if (hz >= kBands[i].LowHz && hz <= kBands[i].HighHz) lastHz_[i] = hz;
  }
}

void BridgedRadio::Do(const BridgeRequest& request) {
  using Kind = BridgeRequest::Kind;
  if (request.What != Kind::Band) {
    // At once: the way to another band may be asked for before the radio tells.
    if (request.What == Kind::VfoA) Remember(request.Value);
    radio_.SetVfo(request.What == Kind::VfoB, request.Value);
    return;
  }
  const auto band = static_cast<std::size_t>(request.Value);
  if (band < lastHz_.size()) radio_.SetVfo(false, lastHz_[band]);
}

}  // namespace spectrino
