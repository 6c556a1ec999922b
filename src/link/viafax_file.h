// The job file of the Viafax service: lines of text with CR LF. A job is a header, a block of
// eleven lines for each address, and the line "NNNN"; a file holds one job or several, and a later
// run goes on with the last of them in place of its "NNNN". Text is that of the cards, OEM, but for
// the sender, which is ANSI.
//
//   NOM CLIENT
//
//   ADMIN BL=12,PW="",REL=""
//
//   PW="/"
//   PM="N",                            of an address, from here
//   PMID="",
//   SUBJ="",
//   UREF="",
//   CC="references, joined by <:R:>",
//   FROM="sender",
//   TO="company",
//   RE="second line of the company",
//   ADR02="the same again",
//   ADR08="attention text",
//   ADR01=number,TYPE=FAXG3,PRI=2      to here
//   NNNN
#pragma once

#include <string>

#include "platform/file_system.h"
#include "storage/card_record.h"

namespace carnetel {

// Addresses of one job at the most.
inline constexpr uint32_t kViafaxJobAddresses = 400;

// The sender, from the settings file of the calling program in the home folder (which ends in '/').
[[nodiscard]] std::string ViafaxUserName(FileSystem& files, const std::string& home_folder,
                                         const std::string& appli_name);

// The number that the name of a job file tells, from its fifth character on; 0 without one.
[[nodiscard]] int32_t ViafaxJobNumber(const std::string& file);

// The attention text of a card, composed by the option; 0 stands for every option there is not.
[[nodiscard]] OemText ViafaxAttention(const CardRecord& card, int option);

// Where the text of a run goes in a file of that size: over the closing line of the last job.
[[nodiscard]] uint64_t ViafaxStart(uint64_t file_size);

struct ViafaxSettings {
  std::string file;
  int number_field = kFax;
  int option = 0;
  std::string user_name;  // UTF-8; bytes that are not are taken for ANSI as they stand
};

// The text of one run.
class ViafaxText {
 public:
  // `continues`: the file has a job already, whose addresses do not count in this run.
  ViafaxText(const ViafaxSettings& settings, bool continues);

  // An address, with or without a number; every 400th is followed by a new job.
  void Add(const CardRecord& card);
  // The closing line.
  void End();

  [[nodiscard]] uint32_t addresses() const { return addresses_; }
  // Of both code pages.
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  void AddHeader();

  int number_field_;
  int option_;
  int32_t job_number_;
  std::string from_line_;
  std::string text_;
  uint32_t addresses_ = 0;
};

}  // namespace carnetel
