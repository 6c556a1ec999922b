#include "tests/cli/cli_testing.h"

#include <memory>

namespace carnetel {

CliOutcome CliTest::Run(const Words& words) {
  std::istringstream in(input_);
  std::ostringstream out;
  std::ostringstream err;
  int asked = 0;
  const CliEnvironment environment{
      .files = disk_,
      .clock = clock_,
      .in = in,
      .out = out,
      .err = err,
      .variables = [this](const std::string& name) { return variables_[name]; },
      .executable_folder = "/usr/bin/",
      .version = "9.9",
      .can_ask = can_ask_,
      .shows_progress = shows_progress_,
      .metric = metric_,
      .interrupted =
          [&] {
            while_running_();
            return interrupt_after_ >= 0 && asked++ >= interrupt_after_;
          },
      .take_guard = [this](const std::string& address_path) -> std::shared_ptr<void> {
        guarded_.push_back(address_path);
        return others_work_on_it_ ? nullptr : std::make_shared<int>(0);
      },
      .run_program =
          [this](const Words& program) {
            programs_.push_back(program);
            handed_over_ = files_.Contents(program.back());
            return program_status_;
          },
      .milliseconds = [this] { return milliseconds_ += 60; }};
  const int status = RunCli(words, environment);
  return {status, out.str(), err.str()};
}

CliOutcome CliTest::On(const Words& words) {
  Words all = {"-d", "/d/CLIENTS"};
  all.insert(all.end(), words.begin(), words.end());
  return Run(all);
}

std::string CliTest::Done(const Words& words) {
  const CliOutcome outcome = On(words);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return outcome.out;
}

void CliTest::ExpectRefused(const Words& words, int status, const std::string& reason) {
  const auto before = Family();
  const CliOutcome outcome = On(words);
  EXPECT_EQ(outcome.status, status) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.err.find("Erreur : " + reason + "\n"), std::string::npos)
      << "instead of " << reason << " it says " << outcome.err;
  EXPECT_EQ(Family(), before) << reason;
}

std::map<std::string, std::vector<std::byte>> CliTest::Family() {
  std::map<std::string, std::vector<std::byte>> family;
  for (const std::string& name : files_.List("/d")) family[name] = files_.Contents("/d/" + name);
  return family;
}

void CliTest::ExpectConsistent() {
  const CliOutcome outcome = On({"check"});
  EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
}

}  // namespace carnetel
