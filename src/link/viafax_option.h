// How the line "à l'attention de" of a Viafax job is composed, and the rules of the dialog that
// chooses it: two sets of compositions, of which one is shown.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace carnetel {

enum class ViafaxSubject { kCompany, kName };

inline constexpr int kViafaxOptions = 7;
// Key of the program's own section of the profile; 0 when it is missing.
inline constexpr std::string_view kViafaxOptionKey = "ViafaxOption";

class ViafaxOptionForm {
 public:
  // `option` as the profile has it: 0 to 2 begin with the company, 3 and above with the name.
  explicit ViafaxOptionForm(int option);

  [[nodiscard]] ViafaxSubject subject() const { return subject_; }
  void set_subject(ViafaxSubject subject) { subject_ = subject; }
  // The choice of the shown set; each set keeps its own.
  [[nodiscard]] int option() const { return option(subject_); }
  [[nodiscard]] int option(ViafaxSubject of) const { return choices_[static_cast<size_t>(of)]; }
  // An option of the shown set.
  void Choose(int option);

 private:
  ViafaxSubject subject_ = ViafaxSubject::kCompany;
  std::array<int, 2> choices_ = {0, 3};
};

}  // namespace carnetel
