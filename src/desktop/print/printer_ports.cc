#include "desktop/print/printer_ports.h"

#include <QProcess>
#include <QRegularExpression>

namespace carnetel::desktop {
namespace {

// A print server that does not answer must not hold up the list of printers.
constexpr int kLongestWaitMilliseconds = 2000;

}  // namespace

QMap<QString, QString> ReadPrinterPorts() {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
  process.setProcessEnvironment(environment);
  process.start(QStringLiteral("lpstat"), {QStringLiteral("-v")});
  if (!process.waitForFinished(kLongestWaitMilliseconds)) {
    process.kill();
    process.waitForFinished();
    return {};
  }
  return ParsePrinterPorts(QString::fromUtf8(process.readAllStandardOutput()));
}

QMap<QString, QString> ParsePrinterPorts(const QString& answer) {
  static const QRegularExpression line(QStringLiteral("^device for (.+?): (\\S+)$"),
                                       QRegularExpression::MultilineOption);
  QMap<QString, QString> ports;
  for (auto matches = line.globalMatch(answer); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    ports.insert(match.captured(1), match.captured(2));
  }
  return ports;
}

}  // namespace carnetel::desktop
