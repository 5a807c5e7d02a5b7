// The line over the lower left corner of the plot: says what is wrong, and what else there is to say.
// Owns the place: of the texts that it was given it shows the most important one, and no other is lost.
#pragma once

#include <QLabel>
#include <QRect>
#include <QTimer>
#include <array>

namespace spectrino {

class StatusLine final : public QLabel {
  Q_OBJECT
 public:
  /// From what matters least to what matters most.
  enum class Rank {
    Standing,  ///< what holds for the whole run, whatever else is said meanwhile
    Programs,  ///< what other programs do with the radio, or why they cannot
    Status,    ///< what a part of the program has to say
    Warning,   ///< the input works, and its levels are not true
    Passing,   ///< an answer to the operator: goes by itself
    Health,    ///< a link is not as it should be
  };

  explicit StatusLine(QWidget* parent);

  /// An empty text takes back what was said with this rank.
  void Show(Rank rank, const QString& text);
  /// What a screen reader finds here while Health is shown: seconds that count on are not said each time.
  void Name(const QString& text);
  /// Logical pixels of the parent: it stands in the lower left corner of this.
  void Place(const QRect& plot);

 private:
  void Write();
  void Fit();

  std::array<QString, 6> texts_;  ///< by rank
  QTimer passingTimer_;
  QString name_;  ///< of what Health says
  QRect plot_;
};

}  // namespace spectrino
