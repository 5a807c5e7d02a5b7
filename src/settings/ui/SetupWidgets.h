// The small parts that every page of the setup dialog is made of.
// Looks and names only: what a control means stands with its page and its key.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStringList>

namespace spectrino::setup {

/// A frame with a grid inside. caption may be empty.
QGroupBox* MakeFrame(const char* name, const QString& caption, QWidget* parent);
[[nodiscard]] QGridLayout* GridOf(QGroupBox* frame);

/// caption may hold a mnemonic ("&"); toolTip is also what a screen reader says.
QCheckBox* MakeCheck(const QString& name, const QString& caption, const QString& toolTip, QWidget* parent);
QRadioButton* MakeOption(const QString& name, const QString& caption, const QString& toolTip,
                         QWidget* parent);
QPushButton* MakeButton(const QString& name, const QString& caption, const QString& toolTip, QWidget* parent);
QComboBox* MakeList(const QString& name, const QStringList& items, const QString& toolTip, QWidget* parent);
/// widthChars: how many digits it should show.
QLineEdit* MakeText(const QString& name, const QString& toolTip, int widthChars, QWidget* parent);

/// Puts label and control side by side; the label's mnemonic moves the focus to the control. Returns the
/// label.
QLabel* AddRow(QGridLayout* grid, int row, const QString& label, QWidget* control, int column = 0);

}  // namespace spectrino::setup
