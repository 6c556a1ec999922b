#include "desktop/print/printer_run.h"

#include <QCoreApplication>

namespace carnetel::desktop {
namespace {

constexpr double kPointsPerInch = 72;

}  // namespace

PrinterRun::PrinterRun(std::unique_ptr<QPrinter> printer, std::unique_ptr<QPainter> painter,
                       PageDrawing drawing)
    : PagedTarget(drawing.fit().lines_per_page),
      printer_(std::move(printer)),
      painter_(std::move(painter)),
      drawing_(std::move(drawing)) {
  PageDrawing::Scale(*painter_, printer_->resolution() / kPointsPerInch);
}

PrinterRun::~PrinterRun() {
  painter_->end();
  CloseBox();
}

// The owner first: turned off, it would take a box that is there already with it.
void PrinterRun::OpenBox(BusyState& busy, QWidget* owner) {
  busy_.emplace(busy);
  owner_ = owner;
  if (owner != nullptr) {
    focus_ = owner->focusWidget();
    owner->setEnabled(false);
  }
  box_ = new AbortBox(printer_->docName(), owner);
  QObject::connect(box_, &AbortBox::abandoned, box_, [this] { Abandon(); });
  box_->show();
  Pump();
}

void PrinterRun::CloseBox() {
  if (!busy_) return;
  delete box_;
  if (owner_ != nullptr) owner_->setEnabled(true);
  if (focus_ != nullptr) focus_->setFocus();
  busy_.reset();
}

bool PrinterRun::Ended() const {
  return abandoned_ || printer_->printerState() == QPrinter::Error;
}

void PrinterRun::DrawLine(int number, std::string_view ansi) {
  drawing_.DrawLine(*painter_, number, ansi);
  if (since_pump_.hasExpired(kPumpMilliseconds)) Pump();
}

void PrinterRun::TurnPage() {
  printer_->newPage();
  if (box_ != nullptr) box_->ShowPage(++page_);
  Pump();
}

void PrinterRun::Abandon() {
  abandoned_ = true;
  printer_->abort();
}

void PrinterRun::Pump() {
  QCoreApplication::processEvents();
  since_pump_.restart();
}

}  // namespace carnetel::desktop
