// The macro editor: caption, the command or the pair of commands, and buttons to try them out.
// Stores and sends nothing by itself; ShowMacroEditor connects it.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <string>

#include "macros/Macros.h"
#include "macros/ui/MacroPanel.h"
#include "platform/WindowCommands.h"

namespace spectrino {

class frmRemFunction final : public QDialog {
  Q_OBJECT
 public:
  /// n: 0..8. inHex: shows how texts in hexadecimal are written.
  frmRemFunction(int n, const Macro& stored, bool inHex, QWidget* parent = nullptr);

  /// As it stands in the fields.
  [[nodiscard]] Macro Edited() const;

 signals:
  /// To be sent at once, for a try.
  void ExecuteMacro(const std::string& text);

 private:
  QLineEdit* AddLine(const char* name, const QString& accessibleName);
  void AddFields(bool inHex);
  void AddButtons();

  void chkOnOff_Click(bool checked);
  void cmdClear_Click();
  void chkTest_Click(bool checked);

  QLineEdit* txtCaption_ = nullptr;
  QLineEdit* txtMacro_ = nullptr;
  QLineEdit* txtOff_ = nullptr;
  QCheckBox* chkOnOff_ = nullptr;
  QPushButton* cmdTest_ = nullptr;
  QPushButton* chkTest_ = nullptr;
};

/// Opens the editor of macro n over the window and returns at once; the dialog deletes itself. OK saves and
/// sets the panel up anew. window: holds the panel, and goes before macros and commands do.
void ShowMacroEditor(Macros& macros, int n, MacroPanel& panel, QWidget* window, WindowCommands& commands);

}  // namespace spectrino
