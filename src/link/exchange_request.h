// Serves a request that a sibling program left in an exchange file: a look-up by surname that is
// answered in the same file, a rewrite of the request, or cards to insert. Texts in the file are
// ANSI.
//
//   0    96       header; ours is the banner below, zero padded
//   96   173 x n  requests; a look-up and a rewrite use the first one
//   288  149      reply to a look-up, 161 with long records
//
//   request  0   3   not used
//            3   34  five rows: 32 bytes of text, u8 number of a field, one spare byte. The first
//                    two name the card: surname, then company
//
//   reply    short  long
//            0      0     30  telephone
//            30     30    u32 offset of the card in the main file
//                   34    33  surname
//            40     67    48  company, 33 in the long form
//            88     100   60  path of the main file, in capitals
#pragma once

#include <cstdint>
#include <string>

#include "base/messages.h"
#include "storage/directory.h"

namespace carnetel {

enum class ExchangeType { kLookUp = 6, kRewrite = 7, kInsert = 8 };

inline constexpr std::string_view kExchangeBanner = "Carnetel V4.00 (C) DROV SOFTWARE\r\n";

struct ExchangeRequestJob {
  ExchangeType type = ExchangeType::kLookUp;
  std::string file;
  bool long_records = false;
};

inline constexpr int kExchangeDone = 1;
inline constexpr int kExchangeNotServed = 0;
inline constexpr int kExchangeRefused = -1;

// kExchangeDone: the request was served, or cards inserted, and the directory is closed.
// kExchangeRefused: the file could not be opened, is one of the directory's own or has cards that
// cannot be taken (the directory is as it was), or a card was refused (the directory is closed).
// kExchangeNotServed: everything else; the directory stays open, and after a look-up its saved
// current row is that of the nearest card, for the chooser that follows.
[[nodiscard]] int ServeExchangeRequest(Directory& directory, const ExchangeRequestJob& job,
                                       MessageForm& messages);

// Whether a file can be opened and holds requests of the job's type. No other one is served.
[[nodiscard]] bool IsExchangeFile(FileSystem& files, const ExchangeRequestJob& job);

// The offset of the card that the reply in an exchange file names, 0 when it has none.
[[nodiscard]] uint32_t RepliedCard(FileSystem& files, const std::string& file);

}  // namespace carnetel
