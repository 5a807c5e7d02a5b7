// The CAT server that the program runs itself: which radio, at which device, how fast.
// Controls and their fields; runs nothing.
#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <functional>
#include <string>

#include "platform/SerialPorts.h"
#include "settings/ui/FreshList.h"
#include "settings/ui/SetupFields.h"

namespace spectrino::setup {

/// Asks for the list of radios; the answer comes later, once, as "rigctl -l" prints it, or not at all.
using AskRigList = std::function<void(std::function<void(const std::string&)> answered)>;

class HostServerFrame final : public QObject {
  Q_OBJECT
 public:
  /// Inside page. ports and ask may be null: then there are none, and the list stays short.
  HostServerFrame(const SerialPorts* ports, AskRigList ask, QWidget* page);

  void AddFields(SetupFields& fields);
  void Show(bool shown);

  QGroupBox* fraHostServer;

 private:
  void FillModels(const std::string& list);
  void ListPorts();
  void ChooseModel(int number);
  [[nodiscard]] int ChosenModel() const;

  const SerialPorts* ports_;
  AskRigList ask_;
  bool asked_ = false;
  QComboBox* cboRigModel_;
  FreshList* cboRigPort_;
  QComboBox* cboRigSpeed_;
};

}  // namespace spectrino::setup
