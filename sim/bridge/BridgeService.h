// The bridge as others see it on the session bus: texts that change, and commands that come in.
// Knows no radio: whoever follows one moves the texts and is told of the commands.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <array>
#include <functional>
#include <vector>

namespace spectrino {

/// What a program asked for.
struct BridgeRequest {
  enum class Kind { VfoA, VfoB, Band } What = Kind::VfoA;
  qint64 Value = 0;  ///< Hz, or the number of a band
};

/// The requests in a text of commands, each ended by a semicolon: "FA" and "FB" with a frequency in Hz, "BN"
/// with a band number. What is neither is left out.
[[nodiscard]] std::vector<BridgeRequest> RequestsIn(const QString& text);

class BridgeService final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.spectrino.Bridge1")
  Q_PROPERTY(QString VfoAHz MEMBER vfoAHz_ NOTIFY Changed)
  Q_PROPERTY(QString VfoBHz MEMBER vfoBHz_ NOTIFY Changed)
  Q_PROPERTY(QString Offset MEMBER offset_ NOTIFY Changed)
  Q_PROPERTY(QString Shift MEMBER shift_ NOTIFY Changed)
  Q_PROPERTY(QString Bandwidth MEMBER bandwidth_ NOTIFY Changed)
  Q_PROPERTY(QString Bandwidth2 MEMBER bandwidth2_ NOTIFY Changed)
  Q_PROPERTY(QString Trouble MEMBER trouble_ NOTIFY Changed)

 public:
  BridgeService();

  /// Serves on the session bus from now on. Empty when it does; else why not.
  [[nodiscard]] QString Serve();
  /// Sets a text by its name on the bus; who follows is told when it changed.
  void Put(const char* name, const QString& value) { setProperty(name, value); }

  std::function<void(const BridgeRequest&)> Requested;

 public slots:
  Q_SCRIPTABLE void Command(const QString& text);

 signals:
  void Changed();
  /// Every command text as it came, for whoever watches.
  Q_SCRIPTABLE void Commanded(const QString& text);

 private:
  void TellChanges();

  QDBusConnection bus_;
  QString vfoAHz_, vfoBHz_, offset_, shift_, bandwidth_, bandwidth2_, trouble_;
  std::array<QString, 7> told_;
};

}  // namespace spectrino
