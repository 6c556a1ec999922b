#include "desktop/help/help_document.h"

#include <QFile>
#include <QRegularExpression>

// In the global namespace, as the macro demands; a library's resources are not found without it.
static void LoadResources() {
  Q_INIT_RESOURCE(help);
}

namespace carnetel::desktop {
namespace {

QString ReadDocument() {
  LoadResources();
  QFile file(QStringLiteral(":/help/aide.html"));
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

HelpDocument::HelpDocument() {
  const QString document = ReadDocument();
  static const QRegularExpression heading(QStringLiteral("<h1><a name=\"(\\w+)\"></a>"));
  const QString tail = QStringLiteral("</body></html>");
  const qsizetype end = document.indexOf(QStringLiteral("</body>"));
  QString head;
  QRegularExpressionMatch match = heading.match(document);
  if (match.hasMatch()) head = document.left(match.capturedStart());
  while (match.hasMatch()) {
    const QRegularExpressionMatch next = heading.match(document, match.capturedEnd());
    const qsizetype stop = next.hasMatch() ? next.capturedStart() : end;
    const qsizetype start = match.capturedStart();
    const QString page = head + document.mid(start, stop - start) + tail;
    bool is_topic = false;
    const int topic = match.captured(1).toInt(&is_topic);
    (is_topic ? pages_[topic] : contents_) = page;
    match = next;
  }
}

QString HelpDocument::Page(int topic) const {
  return pages_.value(topic, pages_.value(kGeneralTopic));
}

}  // namespace carnetel::desktop
