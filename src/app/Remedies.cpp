#include "app/Remedies.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>
#include <algorithm>

#include "capture/ZoomPlan.h"
#include "settings/Keys.h"
#include "settings/SetupSection.h"
#include "settings/ui/frmSetupPan.h"

namespace spectrino {

void Remedies::Take(const Cure& cure) {
  switch (cure.Does) {
    case Remedy::None:
      break;
    case Remedy::OpenSetup:
      OpenSetup();
      break;
    case Remedy::UseRate: {
      const auto* rate = std::ranges::find(kSampleRates, cure.RateHz);
      if (rate != kSampleRates.end())
        StartWith(key::kSRate, static_cast<std::int32_t>(rate - kSampleRates.begin()));
      break;
    }
    case Remedy::PlainZoom:
      StartWith(key::kTypZoom, false);
      break;
    case Remedy::StartAgain:
      window_.Change().StartAgain();
      break;
    case Remedy::UseDemo:
      window_.Change().StartWith(SourceKind::Demo);
      break;
    case Remedy::ShowFolder:
      QDesktopServices::openUrl(
          QUrl::fromLocalFile(QFileInfo(QString::fromStdString(cure.Path)).absolutePath()));
      break;
  }
}

// One that is open already is not opened a second time.
void Remedies::OpenSetup() {
  if (auto* open = window_.findChild<frmSetupPan*>())
    open->activateWindow();
  else
    window_.cmdSetup_Click();
}

template <typename Key, typename Value>
void Remedies::StartWith(const Key& key, const Value& value) {
  SetupSection(store_).Write(key, value);
  window_.LoadSettings();
  window_.Change().StartAgain();
}

}  // namespace spectrino
