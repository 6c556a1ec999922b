#include "link/viafax_option.h"

namespace carnetel {
namespace {

constexpr int kFirstNameOption = 3;

}  // namespace

ViafaxOptionForm::ViafaxOptionForm(int option) {
  if (option >= kFirstNameOption) subject_ = ViafaxSubject::kName;
  // What lies outside of a set leaves its first one chosen.
  Choose(option);
}

void ViafaxOptionForm::Choose(int option) {
  const bool of_name = option >= kFirstNameOption;
  const bool exists = option >= 0 && option < kViafaxOptions;
  if (exists && of_name == (subject_ == ViafaxSubject::kName)) {
    choices_[static_cast<size_t>(subject_)] = option;
  }
}

}  // namespace carnetel
