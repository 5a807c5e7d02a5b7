// picColor: a sample of the plot in the colours that are being edited.
#pragma once

#include <QWidget>

#include "settings/ColourTable.h"

namespace spectrino::setup {

class ColourPreview final : public QWidget {
  Q_OBJECT
 public:
  explicit ColourPreview(QWidget* parent = nullptr);
  void Show(const ColourTable& colours, bool fill, bool subDivision);
  [[nodiscard]] QSize sizeHint() const override { return {230, 170}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ColourTable colours_ = kColoursK4;
  bool fill_ = true;
  bool subDivision_ = false;
};

[[nodiscard]] QColor ToColour(std::uint32_t bgr);
[[nodiscard]] std::uint32_t ToBgr(const QColor& colour);

}  // namespace spectrino::setup
