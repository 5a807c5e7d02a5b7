// The first page that a newcomer sees: which source, with what arrives at each sound input, and Start.
// Stores what a radio is reached by; the choice itself is made and started by who opened the page.
#pragma once

#include <QButtonGroup>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/SerialPorts.h"
#include "settings/SettingsStore.h"
#include "settings/SourceChoice.h"
#include "settings/ui/InputRow.h"

namespace spectrino {

struct FirstStepsWorld {
  SettingsStore& Store;
  SourceList Sources{};                ///< as the page numbers them
  int Current = 0;                     ///< what is ticked at first
  const SerialPorts* Ports = nullptr;  ///< null: there are none
  /// What arrives now, by the id of the input's device; asked ten times a second. Null: nothing is known.
  std::function<std::map<std::string, setup::InputLevel>()> Levels{};
};

class frmFirstSteps final : public QDialog {
  Q_OBJECT
 public:
  explicit frmFirstSteps(FirstStepsWorld world, QWidget* parent = nullptr);

 signals:
  /// The source at index of the list is to be started; what it is reached by is stored.
  void StartWanted(int index);
  void SetupWanted();

 private:
  void MakeRows(QGridLayout& grid);
  QWidget* MakeReach(const ChosenSource& source);
  QWidget* MakeIcom();
  QWidget* MakeK4();
  QLayout* MakeButtons();
  void ShowLevels();
  void cmdStart_Click();
  /// What is still to be entered, and where; empty: nothing.
  [[nodiscard]] std::pair<QString, QWidget*> Missing(SourceKind kind) const;
  void Save(SourceKind kind);

  FirstStepsWorld world_;
  SetupSection setup_;
  QButtonGroup* choices_;  ///< ids are places in the list of sources
  std::map<std::string, setup::InputRow*> inputs_;
  std::vector<SerialPortEntry> ports_;
  QComboBox* cboPort_ = nullptr;
  QLineEdit* txtICAddr_ = nullptr;
  QLineEdit* txtK4_ = nullptr;
  QLabel* lblMissing_;
  QTimer levels_;
};

}  // namespace spectrino
