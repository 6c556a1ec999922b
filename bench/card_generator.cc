#include "bench/card_generator.h"

#include <array>

#include "base/code_page.h"

namespace carnetel::bench {
namespace {

constexpr std::array<std::string_view, 48> kNames = {
    "Albert",   "Arnaud",    "Barbier", "Benard",   "Bertrand", "Blanchard", "Boucher",  "Brunet",
    "Caron",    "Chevalier", "Collet",  "Da Silva", "David",    "Delattre",  "Dupont",   "Durand",
    "Etienne",  "Evrard",    "Faure",   "Fournier", "Garnier",  "Gauthier",  "Guerin",   "Hamel",
    "Hubert",   "Imbert",    "Jacquet", "Joly",     "Klein",    "Lambert",   "Leclercq", "Lefèvre",
    "Marchand", "Martin",    "Meunier", "Noël",     "Olivier",  "Payet",     "Petit",    "Quentin",
    "Renard",   "Roussel",   "Simon",   "Tessier",  "Urbain",   "Vasseur",   "Weber",    "Yvon"};
constexpr std::array<std::string_view, 8> kForms = {"",      " S.A.",  " et fils", " Frères",
                                                    " SARL", " & Cie", " S.A.S.",  " Industries"};
constexpr std::array<std::string_view, 16> kFirstNames = {
    "Aimée", "Antoine", "Claire", "Denis", "Élodie", "François", "Gérard", "Hélène",
    "Inès",  "Jean",    "Lucie",  "Marc",  "Noémie", "Paul",     "René",   "Zoé"};
constexpr std::array<std::string_view, 4> kTitles = {"M.", "Mme", "Mlle", "Dr"};
constexpr std::array<std::string_view, 12> kTowns = {
    "Lyon",     "Nîmes",  "Orléans", "Paris",  "Saint-Étienne", "Béziers",
    "Besançon", "Angers", "Lille",   "Nantes", "Le Mans",       "Évreux"};
constexpr std::array<int, 24> kColumns = {
    kQualite,  kPrenom,   kNom,      kSte1,     kSte2, kAdr1, kAdr2,  kPostalCode,
    kVille,    kPays,     kTel1,     kTel2,     kFax,  kMtel, kModem, kRef1,
    kRef1 + 1, kRef1 + 2, kRef1 + 3, kRef1 + 4, kRef6, -1,    kNotes, -2};

class Sequence {
 public:
  uint32_t Next(uint32_t below) {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    return static_cast<uint32_t>(state_ % below);
  }
  template <size_t N>
  std::string Pick(const std::array<std::string_view, N>& list) {
    return std::string(list[Next(N)]);
  }
  std::string Number() {
    std::string number = "0" + std::to_string(1 + Next(6));
    for (int i = 0; i < 4; ++i) number += ' ' + std::to_string(10 + Next(90));
    return number;
  }

 private:
  uint64_t state_ = 0x9E3779B97F4A7C15;
};

void Set(CardRecord& card, int field, const std::string& utf8) {
  card.SetField(field, OemFromUtf8Lossy(utf8));
}

CardRecord MakeCard(Sequence& sequence, size_t number) {
  CardRecord card;
  const std::string name = sequence.Pick(kNames);
  if (sequence.Next(5) != 0) {
    Set(card, kSte1, name + ' ' + sequence.Pick(kNames) + sequence.Pick(kForms));
  }
  Set(card, kQualite, sequence.Pick(kTitles));
  Set(card, kPrenom, sequence.Pick(kFirstNames));
  Set(card, kNom, sequence.Pick(kNames));
  Set(card, kAdr1, std::to_string(1 + sequence.Next(200)) + ", rue " + sequence.Pick(kNames));
  Set(card, kPostalCode, std::to_string(10000 + sequence.Next(85000)));
  Set(card, kVille, sequence.Pick(kTowns));
  Set(card, kPays, "France");
  Set(card, kTel1, sequence.Number());
  if (sequence.Next(2) == 0) Set(card, kFax, sequence.Number());
  if (sequence.Next(4) == 0) Set(card, kMtel, "3615 " + name);
  Set(card, kRef1, "C" + std::to_string(number));
  if (sequence.Next(8) == 0) Set(card, kNotes, "Préfère être rappelé l'après-midi");
  return card;
}

}  // namespace

std::vector<CardRecord> GenerateCards(size_t count) {
  Sequence sequence;
  std::vector<CardRecord> cards;
  cards.reserve(count);
  for (size_t i = 0; i < count; ++i) cards.push_back(MakeCard(sequence, i));
  return cards;
}

std::string DelimitedText(const CardRecord* cards, size_t count) {
  std::string text;
  for (size_t i = 0; i < count; ++i) {
    for (size_t column = 0; kColumns[column] != -2; ++column) {
      if (column > 0) text += ';';
      if (kColumns[column] >= 0) text += cards[i].FieldText(kColumns[column]).bytes();
    }
    text += "\r\n";
  }
  return text;
}

}  // namespace carnetel::bench
