// The command line of gateway-sim, its exit codes and what it gives the command.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Command, ExitStatusIsTheCommands) {
  EXPECT_EQ(run({"--", "true"}).status, 0);
  EXPECT_EQ(run({"--", "false"}).status, 1);
  EXPECT_EQ(run({"--", "sh", "-c", "exit 42"}).status, 42);
  EXPECT_EQ(run({"--", "sh", "-c", "kill -9 $$"}).status, 137);
}

TEST(Command, StreamsAreTheCommands) {
  const Result result = run({"--", "sh", "-c", "echo to-out; echo to-err >&2"});
  EXPECT_EQ(result.out, "to-out\n");
  EXPECT_EQ(result.err, "to-err\n");
}

TEST(Command, OptionsOfTheCommandAreNotTakenAsOwn) {
  EXPECT_EQ(run({"echo", "--chips", "-x"}).out, "--chips -x\n");
}

TEST(Command, MissingCommandIs127) {
  const Result result = run({"--", "no-such-command-here"});
  EXPECT_EQ(result.status, 127);
  EXPECT_THAT(result.err, HasSubstr("no-such-command-here"));
}

TEST(Command, UnrunnableCommandIs126) {
  EXPECT_EQ(run({"--", "/etc/passwd"}).status, 126);
}

TEST(Command, HelpAndVersion) {
  const Result help = run({"--help"});
  EXPECT_EQ(help.status, 0);
  for (const char* option : {"--chips", "--dat2.4g", "--dat24", "--dat5g", "--dat5", "--journal", "--shell",
                             "--verbose", "--version", "125"}) {
    EXPECT_THAT(help.out, HasSubstr(option));
  }
  const Result version = run({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.out, StartsWith("gateway-sim "));
}

TEST(Command, HelpFitsATerminal) {
  for (const std::string& line : lines_of(run({"--help"}).out)) EXPECT_LE(line.size(), 80U) << line;
}

TEST(Command, AShellHasTheProgramsFolderOnItsPath) {
  const std::string folder = std::filesystem::path(gateway_sim_program()).parent_path();
  const Result result = shell("echo 'echo \"at $PATH:\"' | " + gateway_sim_program() + " --shell 2>&1");
  EXPECT_THAT(result.out, HasSubstr("at /userfs/bin:" + folder + ":"));
  EXPECT_THAT(run({"--", "sh", "-c", "echo at $PATH:"}).out, testing::Not(HasSubstr(folder + ":")));
}

TEST(Command, EitherBandsDatFileGoesByTwoNames) {
  const TestFolder folder;
  write_file(folder / "dat", dat_text(1, "1", "SSID1=own"));
  const char* const kShown = "tail -qn 1 /etc/Wireless/RT2860AP*/RT2860AP.dat | cut -c1-9 | tr '\n' ' '";
  const auto shown = [&](const char* option) { return run({option, folder / "dat", "--", "sh", "-c", kShown}).out; };
  for (const char* option : {"--dat2.4g", "--dat24"}) EXPECT_THAT(shown(option), StartsWith("SSID1=own ")) << option;
  for (const char* option : {"--dat5g", "--dat5"})
    EXPECT_THAT(shown(option), testing::EndsWith(" SSID1=own ")) << option;
}

TEST(Command, WrongOptionsAre2) {
  for (const Words& arguments : {Words{}, Words{"--nonsense", "--", "true"}, Words{"--chips"},
                                 Words{"--chips", "1234", "--", "true"}, Words{"--chips=", "--", "true"},
                                 Words{"--chips", "7603,", "--shell", "true"}, Words{"--dat24=", "--", "true"}}) {
    const Result result = run(arguments);
    EXPECT_EQ(result.status, 2) << testing::PrintToString(arguments);
    EXPECT_THAT(result.err, HasSubstr("gateway-sim:"));
    EXPECT_EQ(result.out, "");
  }
}

TEST(Command, UnusableFilesAre2) {
  for (const char* option : {"--dat24", "--dat5", "--journal"}) {
    const Result result = run({option, "/no/such/folder/file", "--", "true"});
    EXPECT_EQ(result.status, 2) << option;
    EXPECT_THAT(result.err, HasSubstr("/no/such/folder/file"));
  }
}

TEST(Command, AJournalThatIsNoFileIs2AndStaysAsItWas) {
  const std::string before = shell("stat -c %a:%Z /dev/null").out;
  EXPECT_EQ(run({"--journal", "/dev/null", "--", "true"}).status, 2);
  EXPECT_EQ(before, shell("stat -c %a:%Z /dev/null").out);
}

TEST(Command, AnExistingJournalKeepsItsMode) {
  const TestFolder folder;
  write_file(folder / "journal", "old\n");
  shell("chmod 600 " + (folder / "journal"));
  EXPECT_EQ(run({"--journal", folder / "journal", "--", "true"}).status, 0);
  EXPECT_EQ(shell("stat -c %a " + (folder / "journal")).out, "600\n");
  EXPECT_THAT(read_file(folder / "journal"), testing::Not(HasSubstr("old")));
}

TEST(Command, VerboseSaysWhatIsSetUp) {
  const Result result = run({"--verbose", "--", "true"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, HasSubstr("network and radios"));
}

TEST(Command, EnvironmentPutsTheGatewaysToolsFirst) {
  const Result result = run_script("echo $GATEWAY_SIM; echo $PATH; echo $LD_PRELOAD; command -v iwpriv; hostname");
  const Words lines = lines_of(result.out);
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[0], "1");
  EXPECT_THAT(lines[1], StartsWith("/userfs/bin:"));
  EXPECT_THAT(lines[2], StartsWith("/userfs/lib/libgateway_driver.so"));
  EXPECT_EQ(lines[3], "/userfs/bin/iwpriv");
  EXPECT_EQ(lines[4], "gateway");
}

TEST(Command, FileCreationMaskIsTheCallers) {
  const mode_t mask = umask(027);
  EXPECT_EQ(run({"--", "sh", "-c", "umask"}).out, "0027\n");
  umask(mask);
}

TEST(Command, RunsInsideAnotherSimulation) {
  EXPECT_EQ(run({"--", gateway_sim_program(), "--", "sh", "-c", "exit 9"}).status, 9);
}

}  // namespace
}  // namespace sim_test
