#include "k4/K4Retry.h"

#include <algorithm>

#include "settings/SetupSection.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr double kShortestTimeOutMs = 250;
constexpr double kLongestTimeOutMs = 3000;

// A port is stored as it was typed: what is not a number becomes the usual port when connecting.
constexpr TextKey kCatPortText{key::kK4CatPort.Name, "9200"};
constexpr TextKey kPanPortText{key::kK4PanPort.Name, "9201"};
constexpr TextKey kTimeOutText{key::kTcpTimeOutMs.Name, "1000"};

}  // namespace

K4ConnectTexts LoadK4ConnectTexts(SettingsStore& store) {
  const SetupSection setup(store);
  return {setup.Read(key::kK4Address), std::to_string(setup.Read(key::kK4CatPort)),
          std::to_string(setup.Read(key::kK4PanPort)), std::to_string(setup.Read(key::kTcpTimeOutMs))};
}

std::string K4RetryMessage(const K4ConnectTexts& texts) {
  return "Unable to connect " + texts.Host + " " + texts.CatPort + " " + texts.PanPort +
         "\nMake sure of your settings and click OK to resume or Cancel to abort";
}

void SaveK4ConnectTexts(SettingsStore& store, const K4ConnectTexts& texts) {
  const double timeOut = std::clamp(Val(Trim(texts.TimeOut)), kShortestTimeOutMs, kLongestTimeOutMs);
  SetupSection setup(store);
  SetupBatch(setup)
      .Put(key::kK4Address, Trim(texts.Host))
      .Put(kCatPortText, Trim(texts.CatPort))
      .Put(kPanPortText, Trim(texts.PanPort))
      .Put(kTimeOutText, NumberText(timeOut))
      .Save();
}

}  // namespace spectrino
