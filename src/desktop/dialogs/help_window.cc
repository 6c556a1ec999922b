#include "desktop/dialogs/help_window.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace carnetel::desktop {
namespace {

// A line of this length is read with ease; a page of this height rarely needs scrolling.
constexpr int kColumns = 112;
constexpr int kLines = 46;

QSize ReadingSize(const QWidget& window) {
  const QFontMetrics metrics = window.fontMetrics();
  const QSize wanted(metrics.averageCharWidth() * kColumns, metrics.lineSpacing() * kLines);
  return wanted.boundedTo(window.screen()->availableSize() * 9 / 10);
}

}  // namespace

HelpWindow::HelpWindow(int topic, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      browser_(new QTextBrowser),
      shown_(PageOf(topic)) {
  setWindowTitle(QStringLiteral("Aide de Carnetel"));
  setWindowModality(Qt::NonModal);
  setAttribute(Qt::WA_DeleteOnClose);
  browser_->setObjectName(QStringLiteral("help"));
  browser_->setAccessibleName(QStringLiteral("Texte de l’aide"));
  browser_->document()->setDocumentMargin(fontMetrics().averageCharWidth() * 2);
  // Every link comes to FollowLink, so that none can leave the document.
  browser_->setOpenLinks(false);
  connect(browser_, &QTextBrowser::anchorClicked, this, &HelpWindow::FollowLink);
  auto* column = new QVBoxLayout(this);
  column->addWidget(browser_);
  column->addLayout(BuildButtons());
  browser_->setFocus();
  resize(ReadingSize(*this));
  Display(shown_);
  if (parent != nullptr) parent->window()->installEventFilter(this);
}

QLayout* HelpWindow::BuildButtons() {
  auto* contents = MakeButton(QStringLiteral("contents"), QStringLiteral("&Sommaire"));
  back_ = MakeButton(QStringLiteral("back"), QStringLiteral("&Précédent"));
  auto* close = MakeButton(QStringLiteral("2"), QStringLiteral("&Fermer"));
  connect(contents, &QPushButton::clicked, this, &HelpWindow::ShowContents);
  connect(back_, &QPushButton::clicked, this, &HelpWindow::GoBack);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  auto* back_key = new QShortcut(QKeySequence::Back, this);
  connect(back_key, &QShortcut::activated, this, &HelpWindow::GoBack);
  auto* row = new QHBoxLayout;
  row->addWidget(contents);
  row->addWidget(back_);
  row->addStretch();
  row->addWidget(close);
  return row;
}

QPushButton* HelpWindow::MakeButton(const QString& name, const QString& text) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  // Enter is for the link that has the focus.
  button->setAutoDefault(false);
  return button;
}

int HelpWindow::PageOf(int topic) const {
  return document_.HasTopic(topic) ? topic : HelpDocument::kGeneralTopic;
}

void HelpWindow::ShowTopic(int topic) {
  GoTo(PageOf(topic));
}

void HelpWindow::ShowContents() {
  GoTo(kContents);
}

void HelpWindow::GoBack() {
  if (visits_.empty()) return;
  const Visit visit = visits_.back();
  visits_.pop_back();
  Display(visit.page);
  browser_->verticalScrollBar()->setValue(visit.scrolled);
}

void HelpWindow::FollowLink(const QUrl& link) {
  bool is_topic = false;
  const int topic = link.fragment().toInt(&is_topic);
  if (is_topic && link.path().isEmpty() && link.host().isEmpty()) ShowTopic(topic);
}

void HelpWindow::GoTo(int page) {
  if (page == shown_) return;
  visits_.push_back({shown_, browser_->verticalScrollBar()->value()});
  Display(page);
}

void HelpWindow::Display(int page) {
  shown_ = page;
  browser_->setHtml(page == kContents ? document_.Contents() : document_.Page(page));
  // A button that goes off would pass the keyboard on to its neighbour.
  if (visits_.empty() && back_->hasFocus()) browser_->setFocus();
  back_->setEnabled(!visits_.empty());
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
  // A window that is minimised hides, too, but spontaneously.
  if (event->type() == QEvent::Hide && !event->spontaneous()) close();
  return QDialog::eventFilter(watched, event);
}

HelpDesk::~HelpDesk() {
  delete window_.data();
}

void HelpDesk::ShowTopic(int topic) {
  QWidget* const owner = Owner();
  QRect place;
  if (window() != nullptr && window_->parentWidget() != owner) {
    place = window_->geometry();
    Close();
  }
  if (window() != nullptr) {
    window_->ShowTopic(topic);
  } else {
    window_ = new HelpWindow(topic, owner);
    if (place.isValid()) window_->setGeometry(place);
  }
  window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
  window_->show();
  window_->raise();
  window_->activateWindow();
}

void HelpDesk::Close() {
  if (window_ != nullptr) window_->close();
}

HelpWindow* HelpDesk::window() const {
  return window_ != nullptr && window_->isVisible() ? window_.data() : nullptr;
}

QWidget* HelpDesk::Owner() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return window() != nullptr ? window()->parentWidget() : QApplication::activeWindow();
}

}  // namespace carnetel::desktop
