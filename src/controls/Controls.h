// How a control gets the name it is found by and the words that are shown and spoken for it.
// Knows no panel: what a control does, and its place, stand where it is made.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QString>
#include <QWidget>

namespace spectrino {

/// The tool tip, which is also what a screen reader says. A control with neither is called by its caption.
void Describe(QWidget& control, const QString& toolTip);
/// The same with an object name, by which style sheets and tests find the control.
void Describe(QWidget& control, const QString& name, const QString& toolTip);

/// caption may hold a mnemonic ("&").
[[nodiscard]] QPushButton* MakeButton(const QString& name, const QString& caption, const QString& toolTip,
                                      QWidget* parent);
/// One that stays pressed.
[[nodiscard]] QPushButton* MakeToggle(const QString& name, const QString& caption, const QString& toolTip,
                                      QWidget* parent);
/// In a dialog: Enter in one of its fields or lists does not press it.
[[nodiscard]] QPushButton* MakeDialogButton(const QString& name, const QString& caption,
                                            const QString& toolTip, QWidget* parent);

/// Horizontal, low..high.
[[nodiscard]] QSlider* MakeSlider(const QString& name, int low, int high, const QString& toolTip,
                                  QWidget* parent);

/// A label that the style sheet knows by its role: "caption", "tag" ...
[[nodiscard]] QLabel* MakeLabel(const QString& text, const char* role, QWidget* parent);

/// As narrow as a row of many makes it: the caption no longer sets the width.
inline constexpr int kNarrowest = 8;

}  // namespace spectrino
