// What a run leaves where its command line says.
#pragma once

#include <QByteArray>
#include <QString>

namespace spectrino {

/// Writes content to a file, a device or a pipe and closes it. Not empty: why that failed, with the path. A
/// pipe that nobody reads is refused; one whose reader stops is given up after 2 s.
[[nodiscard]] QString WriteOutput(const QString& path, const QByteArray& content);

}  // namespace spectrino
