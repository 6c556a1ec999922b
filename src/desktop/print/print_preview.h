// The first pages of a run as they will come out: white paper beside the print form, drawn by what
// draws on printers, and two buttons that turn it.
#pragma once

#include <QLabel>
#include <QPageLayout>
#include <QPushButton>
#include <QWidget>
#include <optional>

#include "desktop/print/page_drawing.h"
#include "printing/preview_pages.h"
#include "printing/print_form.h"

namespace carnetel::desktop {

// One sheet of paper, as large as its place allows.
class PaperView : public QWidget {
  Q_OBJECT

 public:
  explicit PaperView(QWidget* parent);

  // `page` must stay as long as it is shown.
  void ShowPage(const QPageLayout& layout, const PageDrawing& drawing,
                const PreviewPages::Page& page);
  // Where the sheet lies in the widget.
  [[nodiscard]] QRectF PaperRect() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPageLayout layout_;
  std::optional<PageDrawing> drawing_;
  const PreviewPages::Page* page_ = nullptr;
};

class PrintPreview : public QWidget {
  Q_OBJECT

 public:
  explicit PrintPreview(QWidget* parent);

  // Lays the pages out anew, as `form` would print them on paper of that layout.
  void Refresh(PrintForm& form, const QPageLayout& layout);

  [[nodiscard]] const PreviewPages& pages() const { return *pages_; }

 private:
  void Turn(int step);
  void ShowPage();

  PaperView* paper_;
  QLabel* number_;
  QPushButton* previous_;
  QPushButton* next_;
  QPageLayout layout_;
  std::optional<PageDrawing> drawing_;
  std::optional<PreviewPages> pages_;
  int page_ = 0;
};

}  // namespace carnetel::desktop
