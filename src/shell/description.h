// The rules of the dialog that shows and changes the description of the open directory and, with
// seats, whether it belongs to this seat alone. Nothing is written before Accept; then description
// and owner change in the header as the file has it, and nothing else of it.
#pragma once

#include <string>

#include "shell/session.h"

namespace carnetel {

class DescriptionForm {
 public:
  // Bytes that the description has room for.
  static constexpr int kLongest = static_cast<int>(kDescriptionSize) - 1;

  // Reads the header of the session's directory as the file has it; zeros when it cannot.
  explicit DescriptionForm(Session& session);
  ~DescriptionForm() { ForgetPrivateWish(); }
  DescriptionForm(const DescriptionForm&) = delete;
  DescriptionForm& operator=(const DescriptionForm&) = delete;

  [[nodiscard]] int template_id() const { return has_seat_lines() ? 132 : 103; }
  // Whether there is a box that makes the directory private, and a line that names its owner.
  [[nodiscard]] bool has_seat_lines() const { return session_.lan_on(); }
  // The main file.
  [[nodiscard]] const std::string& path() const { return path_; }
  // As the file has it (UTF-8).
  [[nodiscard]] std::string description() const;
  [[nodiscard]] bool is_private() const { return private_; }
  [[nodiscard]] std::string owner_line() const { return session_.OwnerLine(owner_); }

  // The box was ticked or cleared: the owner line follows.
  void SetPrivate(bool on);
  // Box and owner line become those of the file again.
  void Restore();
  // Writes; the description is cut at kLongest bytes. False, and the dialog stays, when the text
  // does not fit the code page of the file, or the file cannot be written, which is told.
  bool Accept(const std::string& utf8);
  // Ends without a change.
  void Abandon() { ForgetPrivateWish(); }

 private:
  // The seat that a ticked box stands for: this one, whoever owned the directory before.
  [[nodiscard]] uint16_t OwnerOfBox() const;
  // However the dialog ends: the wish would make the next directory opened private.
  void ForgetPrivateWish() { session_.set_private_requested(false); }

  Session& session_;
  std::string path_;
  MainHeader image_;
  bool private_ = false;
  uint16_t owner_ = 0;
};

}  // namespace carnetel
