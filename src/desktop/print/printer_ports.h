// Where the print queues of the system send what is printed: "usb://HP/LaserJet", "cups-pdf:/".
#pragma once

#include <QMap>
#include <QString>

namespace carnetel::desktop {

// By the name of the printer; a queue that the system says nothing about is not there.
[[nodiscard]] QMap<QString, QString> ReadPrinterPorts();

// What `lpstat -v` answers in English: a line "device for NAME: URI" for each queue.
[[nodiscard]] QMap<QString, QString> ParsePrinterPorts(const QString& answer);

}  // namespace carnetel::desktop
