// The help as it is written: every place of the program that asks for help has its page, every link
// arrives, and the French is set as French is.
#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QTextDocument>

#include "desktop/help/help_document.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

// Asked for by dialogs, beside those of the command table.
constexpr int kTopics[] = {11, 40, 48, 49, 50, 51, 52, 53, 54, 55,
                           56, 57, 58, 59, 63, 66, 72, 75, 80, 81};

QString Source() {
  QFile file(QStringLiteral(CARNETEL_SOURCE_DIR "/src/desktop/help/aide.html"));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return QString::fromUtf8(file.readAll());
}

QString TextOf(const QString& html) {
  QTextDocument document;
  document.setHtml(html);
  // QTextDocument::toPlainText would turn the non-breaking spaces into plain ones.
  return document.toRawText();
}

qsizetype Words(const QString& text) {
  static const QRegularExpression word(QStringLiteral("[\\w]+"),
                                       QRegularExpression::UseUnicodePropertiesOption);
  return text.count(word);
}

QStringList AllMatches(const QString& text, const char* pattern) {
  QStringList found;
  const QRegularExpression expression(QString::fromUtf8(pattern));
  for (const QRegularExpressionMatch& match : expression.globalMatch(text)) {
    found += match.captured(match.lastCapturedIndex());
  }
  return found;
}

TEST(HelpDocument, EveryTopicHasOneAnchorAndAPageOfItsOwn) {
  const QString source = Source();
  const HelpDocument document;
  QStringList pages;
  for (const int topic : kTopics) {
    EXPECT_EQ(source.count(QStringLiteral("<a name=\"%1\">").arg(topic)), 1) << topic;
    ASSERT_TRUE(document.HasTopic(topic)) << topic;
    const QString page = document.Page(topic);
    EXPECT_EQ(page.count(QStringLiteral("<h1>")), 1) << topic;
    EXPECT_GE(Words(TextOf(page)), 60) << topic;
    EXPECT_FALSE(pages.contains(page)) << topic;
    pages += page;
  }
  // Nothing but these and the contents, which name nobody's topic.
  const qsizetype written = std::size(kTopics) + 1;
  EXPECT_EQ(source.count(QStringLiteral("<a name=")), written);
  EXPECT_EQ(source.count(QStringLiteral("<h1>")), written);
}

TEST(HelpDocument, AnUnknownTopicGivesTheGeneralPage) {
  const HelpDocument document;
  for (const int topic : {-1, 0, 47, 999}) {
    EXPECT_FALSE(document.HasTopic(topic)) << topic;
    EXPECT_EQ(document.Page(topic), document.Page(48)) << topic;
  }
}

TEST(HelpDocument, EveryCommandAndControlFindsItsPage) {
  const HelpDocument document;
  for (const MenuPopup& popup : MainMenu()) {
    for (const MenuItem& item : popup.items) {
      if (item.command == 0) continue;
      EXPECT_TRUE(document.HasTopic(HelpTopicOfCommand(item.command))) << item.command;
    }
  }
  for (int control = 100; control < 1100; ++control) {
    for (const bool new_card : {false, true}) {
      EXPECT_TRUE(document.HasTopic(HelpTopicOfControl(control, new_card))) << control;
    }
  }
}

TEST(HelpDocument, EveryLinkArrivesAndTheContentsNameEveryPage) {
  const HelpDocument document;
  const QStringList links = AllMatches(Source(), "href=\"([^\"]*)\"");
  EXPECT_GT(links.size(), 20);
  for (const QString& link : links) {
    EXPECT_TRUE(link.startsWith('#') && document.HasTopic(link.mid(1).toInt()))
        << link.toStdString();
  }
  const QStringList listed = AllMatches(document.Contents(), "href=\"#([^\"]*)\"");
  EXPECT_EQ(listed.size(), static_cast<qsizetype>(std::size(kTopics)));
  for (const int topic : kTopics) EXPECT_TRUE(listed.contains(QString::number(topic))) << topic;
}

TEST(HelpDocument, TheContentsNamePagesByTheirHeadings) {
  const HelpDocument document;
  const QRegularExpression entry(QStringLiteral("<a href=\"#(\\d+)\">([^<]*)</a>"));
  for (const QRegularExpressionMatch& match : entry.globalMatch(document.Contents())) {
    const QString page = document.Page(match.captured(1).toInt());
    EXPECT_TRUE(page.contains("</a>" + match.captured(2) + "</h1>"))
        << match.captured(2).toStdString();
  }
}

TEST(HelpDocument, NothingComesFromOutside) {
  const QStringList outside =
      AllMatches(Source(), "(https?:|file:|<img|<link|<script|@import|url\\()");
  EXPECT_TRUE(outside.isEmpty()) << outside.join(' ').toStdString();
}

TEST(HelpDocument, SignsStandAfterSpacesThatDoNotBreak) {
  const HelpDocument document;
  QString text = TextOf(document.Contents());
  for (const int topic : kTopics) text += TextOf(document.Page(topic));
  EXPECT_TRUE(text.contains(QChar::Nbsp));
  const QStringList broken = AllMatches(text, ".{0,20}(?:[^\\xa0][;:?!»]|«[^\\xa0]).{0,10}");
  EXPECT_TRUE(broken.isEmpty()) << broken.join('|').toStdString();
  const QStringList typewriter = AllMatches(text, ".{0,20}['\"].{0,10}");
  EXPECT_TRUE(typewriter.isEmpty()) << typewriter.join('|').toStdString();
}

TEST(HelpDocument, NoWordIsMisencoded) {
  const QStringList wrong = AllMatches(Source(), ".{0,10}(?:\\x{fffd}|Ã|â€).{0,10}");
  EXPECT_TRUE(wrong.isEmpty()) << wrong.join('|').toStdString();
}

}  // namespace
}  // namespace carnetel::desktop
