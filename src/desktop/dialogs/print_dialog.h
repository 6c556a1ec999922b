// "Impression de l'carnetel": two pages, the set-up of the print and the columns of the list,
// beside a preview of what comes out. It stays open after a print. What the controls mean is said
// by PrintForm.
#pragma once

#include <QPageLayout>
#include <QTabWidget>
#include <functional>

#include "desktop/dialogs/fixed_dialog.h"
#include "desktop/dialogs/path_label.h"
#include "desktop/print/print_layout_page.h"
#include "desktop/print/print_preview.h"
#include "desktop/print/print_setup_page.h"

namespace carnetel::desktop {

class PrintDialog : public FixedDialog {
  Q_OBJECT

 public:
  // The page of a printer.
  using PageOf = std::function<QPageLayout(const std::string& printer)>;

  // `form` outlives the dialog, its directory need not: it may close under a dialog that ends.
  PrintDialog(PrintForm& form, PageOf page_of, QWidget* parent);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QLayout* MakeButtons();
  void ShowPrinter();
  void PageTurned();
  void Configure();
  void Print();
  // Once the events at hand are done, however many of them ask for it.
  void RefreshSoon();
  void Refresh();

  PrintForm& form_;
  PageOf page_of_;
  PathLabel* printer_;
  QTabWidget* pages_;
  PrintSetupPage* setup_;
  PrintLayoutPage* layout_page_;
  PrintPreview* preview_;
  QPushButton* print_ = nullptr;
  bool refresh_asked_ = false;
};

}  // namespace carnetel::desktop
