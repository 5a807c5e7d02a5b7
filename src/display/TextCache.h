// Texts that were laid out once and are drawn again every frame.
// Keeps layouts only; position, colour and veil are the caller's.
#pragma once

#include <QFont>
#include <QPainter>
#include <QSize>
#include <QStaticText>
#include <QString>
#include <map>
#include <string>
#include <utility>

#include "display/PlotLayout.h"
#include "settings/ColourTable.h"

namespace spectrino {

/// Shaping a line of text costs about what drawing the whole trace does, and most texts stay for minutes.
class TextCache {
 public:
  struct Entry {
    QStaticText Text;
    QSize Size;  ///< in the painter's pixels: advance and height
  };

  /// The text on one line. Valid until the next call.
  const Entry& Get(const std::string& text, const QFont& font);
  /// The same, shortened with an ellipsis to at most maxWidth.
  const Entry& GetElided(const std::string& text, const QFont& font, int maxWidth);
  /// After fonts or scale changed.
  void Clear() { entries_.clear(); }

 private:
  std::map<std::pair<std::string, QString>, Entry> entries_;
};

/// What drawing over the plot needs besides the thing drawn.
struct OverlayPen {
  QPainter& Painter;
  const PlotLayout& Layout;
  const ColourTable& Colours;
  TextCache& Texts;
  int Palette = 0;  ///< of a radio's small waterfalls
};

}  // namespace spectrino
