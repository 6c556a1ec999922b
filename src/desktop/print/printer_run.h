// One run on a printer: the document, the drawing of its lines, the box to abandon it and the
// window that is off as long.
#pragma once

#include <QElapsedTimer>
#include <QPainter>
#include <QPointer>
#include <QPrinter>
#include <memory>
#include <optional>

#include "desktop/controls/busy_state.h"
#include "desktop/print/abort_box.h"
#include "desktop/print/page_drawing.h"
#include "printing/printer_port.h"

namespace carnetel::desktop {

class PrinterRun : public PagedTarget {
 public:
  static constexpr int kPumpMilliseconds = 40;

  // `painter` has begun on `printer`; `drawing` is for its page.
  PrinterRun(std::unique_ptr<QPrinter> printer, std::unique_ptr<QPainter> painter,
             PageDrawing drawing);
  // Ends the document.
  ~PrinterRun() override;
  PrinterRun(const PrinterRun&) = delete;
  PrinterRun& operator=(const PrinterRun&) = delete;

  // Turns `owner` off and shows the box over it.
  void OpenBox(BusyState& busy, QWidget* owner);

  // Once the user has abandoned the run, or the printer has failed.
  [[nodiscard]] bool Ended() const override;

 protected:
  void DrawLine(int number, std::string_view ansi) override;
  void TurnPage() override;

 private:
  void Abandon();
  void Pump();
  void CloseBox();

  std::unique_ptr<QPrinter> printer_;
  std::unique_ptr<QPainter> painter_;
  PageDrawing drawing_;
  std::optional<BusyScope> busy_;
  QPointer<AbortBox> box_;
  QPointer<QWidget> owner_;
  QPointer<QWidget> focus_;  // of the owner
  QElapsedTimer since_pump_;
  int page_ = 1;
  bool abandoned_ = false;
};

}  // namespace carnetel::desktop
