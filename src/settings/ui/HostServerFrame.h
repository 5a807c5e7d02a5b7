// The CAT server that the program runs itself: which radio, at which device, how fast.
// Controls and their fields; runs nothing.
#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QTimer>
#include <functional>
#include <string>

#include "platform/SerialPorts.h"
#include "settings/ui/FreshList.h"
#include "settings/ui/SetupFields.h"

namespace spectrino::setup {

/// Asks for the list of radios; the answer comes later, once, as "rigctl -l" prints it, or not at all.
using AskRigList = std::function<void(std::function<void(const std::string&)> answered)>;

/// What stands where the host program is looked for.
struct FoundServer {
  enum class Kind {
    Elsewhere,  ///< on another machine: none of ours can stand there
    Nobody,
    Ours,       ///< the one that this program runs
    CatServer,  ///< one that somebody else runs
    Another,    ///< a program that does not answer as a CAT server does
  } What = Kind::Elsewhere;
  std::string Where{};  ///< host:port
};
/// Looks there. endpoint: as it was typed. Answers once, at once for another machine, else later and not when
/// context has gone.
using LookForServer = std::function<void(const std::string& endpoint, QObject* context,
                                         std::function<void(const FoundServer&)> answered)>;

class HostServerFrame final : public QObject {
  Q_OBJECT
 public:
  /// Inside page. ports, ask and look may be null: then there are none, the list stays short, and nothing is
  /// told of a server.
  HostServerFrame(const SerialPorts* ports, AskRigList ask, LookForServer look, QWidget* page);

  void AddFields(SetupFields& fields);
  /// wanted: the CAT control goes through the host program. endpoint: where that is, as typed; looked at
  /// again each time. Shown for one of this machine alone.
  void Show(bool wanted, const QString& endpoint);
  /// Why what is typed for the radio names none; empty when it does. The focus goes there then.
  [[nodiscard]] QString Problem();

  QGroupBox* fraHostServer;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeModelList();
  void MakePortList();
  void Look();
  void Tell(const FoundServer& found);
  void ShowNotes();
  void FillModels(const std::string& list);
  void ListPorts();
  void ChooseModel(int number);
  void TakeTyped();

  const SerialPorts* ports_;
  AskRigList ask_;
  LookForServer look_;
  bool asked_ = false;
  QString endpoint_;
  int looks_ = 0;    ///< an answer to an earlier look is nobody's
  QString found_;    ///< what was found there
  QString problem_;  ///< with what is typed
  QTimer typing_;    ///< the endpoint: it is looked at when the hand rests
  QComboBox* cboRigModel_;
  FreshList* cboRigPort_;
  QComboBox* cboRigSpeed_;
  QLabel* lblHostServer_;
};

}  // namespace spectrino::setup
