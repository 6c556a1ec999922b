// "A propos de l'carnetel": what this program is, and which version.
#pragma once

#include "desktop/dialogs/fixed_dialog.h"

namespace carnetel::desktop {

class AboutDialog : public FixedDialog {
  Q_OBJECT

 public:
  explicit AboutDialog(QWidget* parent);
};

}  // namespace carnetel::desktop
