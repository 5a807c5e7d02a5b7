// The 13 display colours: a button for each, the two sets of defaults, a preview.
#pragma once

#include <QObject>
#include <array>
#include <cstdint>
#include <optional>

#include "settings/ui/ColourPreview.h"
#include "settings/ui/SetupFields.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class ColourEditor final : public QObject {
  Q_OBJECT
 public:
  /// Puts its buttons into the two top rows of the frame's grid and the preview beside the first five.
  /// fill, subDivision: the check boxes without which those colours are not drawn.
  ColourEditor(QGroupBox* frame, QCheckBox* fill, QCheckBox* subDivision);

  [[nodiscard]] SetupField Field();
  /// The last to get the focus by Tab.
  [[nodiscard]] QWidget* LastButton() const { return cmdK4Color_; }

 private:
  void MakeButtons(QGroupBox* frame);
  void Load(const SetupSection& setup);
  void Put(SetupBatch& batch) const;
  void Edit(std::size_t n);
  void SetDefaults(const ColourTable& colours);
  void Show();

  std::array<QPushButton*, kColourCount> cmdColor_{};
  QPushButton* cmdK4Color_ = nullptr;
  QCheckBox* chkFill_;
  QCheckBox* chkSubD_;
  ColourPreview* picColor_;
  ColourTable colours_ = kColoursK4;
  std::array<std::optional<std::uint32_t>, kColourCount> stored_{};
};

}  // namespace spectrino::setup
