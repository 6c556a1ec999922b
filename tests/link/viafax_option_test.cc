#include "link/viafax_option.h"

#include <gtest/gtest.h>

namespace carnetel {
namespace {

TEST(ViafaxOption, TheProfileDecidesWhichSetIsShownAndChosen) {
  for (int option = 0; option < kViafaxOptions; ++option) {
    const ViafaxOptionForm form(option);
    EXPECT_EQ(form.option(), option);
    EXPECT_EQ(form.subject(), option < 3 ? ViafaxSubject::kCompany : ViafaxSubject::kName);
  }
}

TEST(ViafaxOption, TheOtherSetKeepsItsFirstChoice) {
  ViafaxOptionForm company(2);
  company.set_subject(ViafaxSubject::kName);
  EXPECT_EQ(company.option(), 3);
  ViafaxOptionForm name(5);
  name.set_subject(ViafaxSubject::kCompany);
  EXPECT_EQ(name.option(), 0);
}

TEST(ViafaxOption, EachSetKeepsItsLastChoice) {
  ViafaxOptionForm form(1);
  form.set_subject(ViafaxSubject::kName);
  form.Choose(6);
  form.set_subject(ViafaxSubject::kCompany);
  EXPECT_EQ(form.option(), 1);
  form.Choose(2);
  form.set_subject(ViafaxSubject::kName);
  EXPECT_EQ(form.option(), 6);
}

TEST(ViafaxOption, OnlyOptionsOfTheShownSetCanBeChosen) {
  ViafaxOptionForm form(0);
  for (const int option : {3, 6, 7, -1}) {
    form.Choose(option);
    EXPECT_EQ(form.option(), 0) << option;
  }
}

TEST(ViafaxOption, ValuesOutsideLeaveTheFirstOfTheirSet) {
  EXPECT_EQ(ViafaxOptionForm(-5).option(), 0);
  EXPECT_EQ(ViafaxOptionForm(-5).subject(), ViafaxSubject::kCompany);
  EXPECT_EQ(ViafaxOptionForm(7).option(), 3);
  EXPECT_EQ(ViafaxOptionForm(99).subject(), ViafaxSubject::kName);
}

}  // namespace
}  // namespace carnetel
