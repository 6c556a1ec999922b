// What the preferences show, enable and take over.
#include <gtest/gtest.h>

#include "shell/preferences.h"

namespace carnetel {
namespace {

TEST(PreferencesForm, ShowsTheSettings) {
  const PreferencesForm form(Settings(), false);
  EXPECT_EQ(form.key_field(), kSte1);
  EXPECT_TRUE(form.shows_references());
  EXPECT_FALSE(form.starts_at_first());
  EXPECT_EQ(form.style_aff_list(), 1);
  EXPECT_EQ(form.style_aff_ste(), 0);
  EXPECT_TRUE(form.balloons());
  EXPECT_TRUE(form.balloons_enabled());
  Settings others;
  others.key_field = kNom;
  others.shows_references = false;
  others.starts_at_first = true;
  others.style_aff_list = 3;
  others.style_aff_ste = 2;
  others.balloons = false;
  const PreferencesForm other(others, false);
  EXPECT_EQ(other.key_field(), kNom);
  EXPECT_FALSE(other.shows_references());
  EXPECT_TRUE(other.starts_at_first());
  EXPECT_EQ(other.style_aff_list(), 3);
  EXPECT_EQ(other.style_aff_ste(), 2);
  EXPECT_FALSE(other.balloons());
}

TEST(PreferencesForm, OnlyTheStylesOfTheChosenIndexAreEnabled) {
  PreferencesForm form(Settings(), false);
  EXPECT_TRUE(form.company_styles_enabled());
  EXPECT_FALSE(form.person_styles_enabled());
  form.set_key_field(kNom);
  EXPECT_FALSE(form.company_styles_enabled());
  EXPECT_TRUE(form.person_styles_enabled());
  form.set_key_field(kSte1);
  EXPECT_TRUE(form.company_styles_enabled());
  EXPECT_FALSE(form.person_styles_enabled());
}

TEST(PreferencesForm, TooltipsAreOffAndGreyedWithACaller) {
  const Settings settings;
  ASSERT_TRUE(settings.balloons);
  PreferencesForm form(settings, true);
  EXPECT_FALSE(form.balloons());
  EXPECT_FALSE(form.balloons_enabled());
  EXPECT_TRUE(form.TakenOver(settings).balloons);
  Settings without;
  without.balloons = false;
  form.set_balloons(true);
  EXPECT_FALSE(form.balloons());
  EXPECT_FALSE(form.TakenOver(without).balloons);
}

TEST(PreferencesForm, EveryChoiceIsTakenOver) {
  PreferencesForm form(Settings(), false);
  form.set_key_field(kNom);
  form.set_style_aff_list(2);
  form.set_shows_references(false);
  form.set_starts_at_first(true);
  form.set_balloons(false);
  const Settings taken = form.TakenOver(Settings());
  EXPECT_EQ(taken.key_field, kNom);
  EXPECT_EQ(taken.style_aff_list, 2);
  EXPECT_FALSE(taken.shows_references);
  EXPECT_TRUE(taken.starts_at_first);
  EXPECT_FALSE(taken.balloons);
}

TEST(PreferencesForm, OnlyTheStyleOfTheChosenIndexIsTakenOver) {
  PreferencesForm form(Settings(), false);
  form.set_style_aff_ste(2);
  form.set_key_field(kNom);
  form.set_style_aff_list(3);
  EXPECT_EQ(form.TakenOver(Settings()).style_aff_list, 3);
  EXPECT_EQ(form.TakenOver(Settings()).style_aff_ste, 0);
  form.set_key_field(kSte1);
  EXPECT_EQ(form.TakenOver(Settings()).style_aff_list, 1);
  EXPECT_EQ(form.TakenOver(Settings()).style_aff_ste, 2);
}

TEST(PreferencesForm, AStyleThatDoesNotExistStaysUntilAnotherIsChosen) {
  Settings odd;
  odd.style_aff_ste = 7;
  odd.style_aff_list = -1;
  PreferencesForm form(odd, false);
  EXPECT_EQ(form.style_aff_ste(), 7);
  EXPECT_EQ(form.style_aff_list(), -1);
  EXPECT_EQ(form.TakenOver(odd).style_aff_ste, 7);
  form.set_style_aff_ste(1);
  EXPECT_EQ(form.TakenOver(odd).style_aff_ste, 1);
  EXPECT_EQ(form.TakenOver(odd).style_aff_list, -1);
}

TEST(PreferencesForm, WhatTheDialogDoesNotShowStays) {
  Settings settings;
  settings.recent_directory = "/d/X";
  const PreferencesForm form(Settings(), false);
  EXPECT_EQ(form.TakenOver(settings).recent_directory, "/d/X");
}

}  // namespace
}  // namespace carnetel
