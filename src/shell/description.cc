#include "shell/description.h"

#include "base/code_page.h"

namespace carnetel {
namespace {

bool Describe(Directory& directory, const OemText& text, std::optional<uint16_t> owner) {
  const ChangeScope change(directory);
  return change && directory.main().Describe(text, owner);
}

}  // namespace

DescriptionForm::DescriptionForm(Session& session)
    : session_(session), path_(session.CurrentMainFile()) {
  if (const Directory* directory = session_.directory()) {
    image_ = ReadMainHeader(directory->files(), directory->paths().Main()).value_or(MainHeader());
  }
  Restore();
}

std::string DescriptionForm::description() const {
  // A foreign file may fill the place of the closing zero too.
  return Utf8FromOem(OemText(image_.description().bytes().substr(0, kLongest)));
}

uint16_t DescriptionForm::OwnerOfBox() const {
  return private_ ? static_cast<uint16_t>(session_.workstation_number()) : uint16_t{0};
}

void DescriptionForm::SetPrivate(bool on) {
  private_ = on;
  owner_ = OwnerOfBox();
  session_.set_private_requested(on);
}

void DescriptionForm::Restore() {
  owner_ = image_.owner();
  private_ = owner_ != 0;
  ForgetPrivateWish();
}

bool DescriptionForm::Accept(const std::string& utf8) {
  const OemConversion typed = OemFromUtf8(utf8);
  if (!typed.refused.empty()) return false;
  // Without the box nobody chose an owner: the file keeps the one it has.
  std::optional<uint16_t> owner;
  if (has_seat_lines()) owner = OwnerOfBox();
  Directory* directory = session_.directory();
  if (directory == nullptr || !Describe(*directory, typed.text, owner)) {
    session_.services().messages.ShowMessage(MessageStyle::kError, 79, 43, path_);
    return false;
  }
  ForgetPrivateWish();
  return true;
}

}  // namespace carnetel
