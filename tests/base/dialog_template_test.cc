#include "base/dialog_template.h"

#include <gtest/gtest.h>

namespace carnetel {
namespace {

TEST(DialogTemplate, TitlesStandAsTheyAre) {
  EXPECT_EQ(DialogTitle(100), "Carnetel Tolfax :  %s");
  EXPECT_EQ(DialogTitle(122), "Gestion de Groupe ");
  EXPECT_EQ(DialogTitle(126), "Consultation");
  EXPECT_EQ(DialogTitle(136), "Erreur !   Carnetel invalide");
  EXPECT_EQ(DialogTitle(1049), "Rubrique à l'attention de...");
}

TEST(DialogTemplate, EveryNumberFrom100To136HasATemplate) {
  for (int number = 100; number <= 136; ++number) EXPECT_TRUE(HasDialogTemplate(number)) << number;
  EXPECT_FALSE(HasDialogTemplate(99));
  EXPECT_FALSE(HasDialogTemplate(137));
  EXPECT_EQ(DialogTitle(137), "");
}

TEST(DialogTemplate, SomeTemplatesHaveNoTitle) {
  for (const int number : {101, 104, 129, 133}) {
    EXPECT_TRUE(HasDialogTemplate(number)) << number;
    EXPECT_EQ(DialogTitle(number), "") << number;
  }
}

}  // namespace
}  // namespace carnetel
