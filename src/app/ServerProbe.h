// What stands at a port of this machine: nobody, a CAT server, or something else. Asks and never waits;
// starts nothing.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <string>

namespace spectrino {

enum class PortHolder { Nobody, CatServer, Another };

/// "localhost" and every loopback address.
[[nodiscard]] bool IsThisMachine(const std::string& host);

/// The address under which a server of ours stands for a host of this machine.
[[nodiscard]] std::string LoopbackOf(const std::string& host);

/// host: one of this machine. Answers once, from the event loop, within a second; never when context has
/// gone. Who takes the connection and does not answer in that time as a CAT server does is another.
void AskPort(const std::string& host, int port, QObject* context, std::function<void(PortHolder)> answered);

}  // namespace spectrino
