#include <algorithm>

#include "tools/tool.h"

namespace {

class ConvertFiles : public ToolTest {
 protected:
  // Runs `convert` with the bytes of movie.raw coming from a pipe.
  ToolResult ConvertPiped(const std::string& arguments) const {
    return Shell("cat movie.raw | '" LM_TOOL "' convert - " + arguments);
  }
};
using Names = std::vector<std::string>;

TEST_F(ConvertFiles, SeveralGoToADirectory) {
  Write("a.raw", {1, 2, 3});
  Write("b.bin", {4, 5, 6});
  RunSilently("convert a.raw b.bin --output made/here --as raw --from RGB8 --to BGR8 --size 1x1");
  EXPECT_EQ(Read("made/here/a.raw"), (Bytes{3, 2, 1}));
  EXPECT_EQ(Read("made/here/b.raw"), (Bytes{6, 5, 4}));
  RunSilently("convert --output pictures a.raw --from RGB8 --size 1x1");
  RunSilently("convert pictures/a.png b.bin --output back --as raw --from BGR8 --to RGB8 --size 1x1");
  EXPECT_EQ(Read("back/a.raw"), (Bytes{1, 2, 3}));
  EXPECT_EQ(Read("back/b.raw"), (Bytes{6, 5, 4}));
}

TEST_F(ConvertFiles, OneThatFailsKeepsTheOthersFromNothing) {
  Write("a.raw", {1});
  Write("b.raw", {1, 2});
  Write("c.raw", {3});
  const ToolResult result =
      Run("convert a.raw b.raw missing.raw c.raw --output out --as raw --from Mono8 --to Mono8 "
          "--size 1x1");
  EXPECT_EQ(result.exitCode, 1);
  for (const char* const mention : {"'b.raw' has 2 bytes", "'missing.raw'", "2 of 4 files"}) {
    EXPECT_NE(result.output.find(mention), std::string::npos) << result.output;
  }
  EXPECT_EQ(Files("out"), (Names{"a.raw", "c.raw"}));
}

// Files that take long come among short ones, so that jobs overtake each other.
TEST_F(ConvertFiles, JobsReportInTheOrderOfTheFiles) {
  std::string names, reports;
  std::size_t failures = 0;
  for (int i = 10; i < 60; ++i) {
    const std::string name = std::to_string(i) + ".raw";
    names += name + ' ';
    Write(name, Bytes(i % 7 == 3 ? 4 : i % 5 == 0 ? 300000 : 3, static_cast<std::uint8_t>(i)));
    if (i % 7 != 3) continue;
    reports += "lmimaging: SOURCE: '" + name + "'\n";
    ++failures;
  }
  reports += "lmimaging: " + std::to_string(failures) + " of 50 files could not be converted\n";
  const std::string convert = "convert " + names + "--as raw --from RGB8 --to BGR8 --size 1x1 --frames all --output ";
  for (const std::string jobs : {"1", "2", "64"}) {
    const ToolResult result = Shell("'" LM_TOOL "' " + convert + jobs + " --jobs " + jobs +
                                    " 2>&1 | sed \"s/^\\(lmimaging: SOURCE: '[^']*'\\).*/\\1/\"");
    EXPECT_EQ(result.output, reports) << jobs;
    EXPECT_EQ(Files(jobs).size(), 50 - failures) << jobs;
    EXPECT_EQ(Read(jobs + "/50.raw"), Bytes(300000, 50)) << jobs;
  }
}

TEST_F(ConvertFiles, ThreadsShareAFrame) {
  RunSilently("synth frame.raw --type BayerRG10 --size 701x503");
  const std::string convert = "convert frame.raw one.raw --from BayerRG10 --to RGB8 --size 701x503 ";
  RunSilently(convert);
  const Bytes one = Read("one.raw");
  for (const std::string options : {"--threads 3", "--threads 256 --jobs 256"}) {
    RunSilently(convert + options);
    EXPECT_EQ(Read("one.raw"), one) << options;
  }
  RunSilently(convert + "--tone srgb --matrix 1,0,0,0,1,0,0,0,1");
  const Bytes developed = Read("one.raw");
  RunSilently(convert + "--tone srgb --matrix 1,0,0,0,1,0,0,0,1 --threads 5");
  EXPECT_EQ(Read("one.raw"), developed);
}

TEST_F(ConvertFiles, FramesOfOneFileAreTakenInTurn) {
  const std::string gray = " --from Mono8 --size 1x2";
  Write("movie.raw", {1, 2, 3, 4, 5, 6});
  RunSilently("convert movie.raw all.raw --to RGB8 --frames all" + gray);
  EXPECT_EQ(Read("all.raw"), (Bytes{1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6, 6, 6}));
  RunSilently("convert movie.raw some.raw --to Mono8 --frames 1-2" + gray);
  EXPECT_EQ(Read("some.raw"), (Bytes{3, 4, 5, 6}));
  EXPECT_EQ(ConvertPiped("piped.raw --to Mono8 --frames 1-2" + gray).output, "");
  EXPECT_EQ(Read("piped.raw"), (Bytes{3, 4, 5, 6}));

  RunSilently("convert movie.raw --output shots --frames all" + gray);
  EXPECT_EQ(Files("shots"), (Names{"movie-0000.png", "movie-0001.png", "movie-0002.png"}));
  RunSilently("convert shots/movie-0001.png one.raw --to Mono8");
  EXPECT_EQ(Read("one.raw"), (Bytes{3, 4}));
  RunSilently("convert movie.raw shots/last.bmp --frames 2" + gray);
  RunSilently("convert shots/last.bmp one.raw --to BGR8");
  EXPECT_EQ(Read("one.raw"), (Bytes{5, 5, 5, 6, 6, 6}));
}

TEST_F(ConvertFiles, FramesPassThroughPipes) {
  const std::string rgb = "--from RGB8 --to BGR8 --size 1x1 --frames all";
  Write("movie.raw", {1, 2, 3, 4, 5, 6});
  // The second frame comes only after the first one has gone through.
  const ToolResult result =
      Shell("mkfifo in out; '" LM_TOOL "' convert - - " + rgb +
            " < in > out & exec 3> in 4< out; head -c 3 movie.raw >&3; timeout 20 head -c 3 <&4 > first.raw; "
            "tail -c 3 movie.raw >&3; exec 3>&-; cat <&4 > second.raw");
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(Read("first.raw"), (Bytes{3, 2, 1}));
  EXPECT_EQ(Read("second.raw"), (Bytes{6, 5, 4}));

  const ToolResult closed =
      Shell("{ '" LM_TOOL "' convert /dev/zero - " + rgb + "; echo code $? >&2; } | head -c 3 > first.raw");
  EXPECT_EQ(closed.output, "lmimaging: DESTINATION: cannot write the standard output: Broken pipe\ncode 1\n");
}

TEST_F(ConvertFiles, EndOfAPipeWithinAFrameLeavesNoFile) {
  Write("movie.raw", {1, 2, 3, 4, 5});
  for (const std::string arguments : {"--frames all", "--frames 0-2", "--frames 3", "--frames 1-7"}) {
    const ToolResult result = ConvertPiped("out.raw --from Mono8 --to Mono8 --size 1x2 " + arguments);
    EXPECT_EQ(result.exitCode, 1) << arguments;
    EXPECT_EQ(Files(), Names{"movie.raw"}) << arguments << result.output;
  }
}

TEST_F(ConvertFiles, PaddedLinesAreRead) {
  Write("padded.raw", {1, 2, 99, 99, 3, 4, 99, 99, 5, 6, 99, 99, 7, 8});
  const std::string options = " --from Mono8 --to Mono8 --line-size 4 ";
  RunSilently("convert padded.raw out.raw --size 2x4" + options);
  EXPECT_EQ(Read("out.raw"), (Bytes{1, 2, 3, 4, 5, 6, 7, 8}));
  RunSilently("convert padded.raw out.raw --frames 1 --size 2x2" + options);  // without the padding of its last line
  EXPECT_EQ(Read("out.raw"), (Bytes{5, 6, 7, 8}));
}

// Nothing but a terminal is shown progress.
TEST_F(ConvertFiles, ProgressIsForTerminals) {
  Write("movie.raw", Bytes(50));
  RunSilently("convert movie.raw out.raw --from Mono8 --to Mono8 --size 1x1 --frames all");
  if (!Has("script")) GTEST_SKIP() << "needs script, to make a terminal";
  const ToolResult watched = Shell("script -qec '" LM_TOOL
                                   " convert movie.raw out.raw --from Mono8 --to Mono8 "
                                   "--size 1x1 --frames all' /dev/null");
  EXPECT_EQ(watched.exitCode, 0);
  EXPECT_NE(watched.output.find("##] 50/50 movie.raw"), std::string::npos) << watched.output;
  EXPECT_EQ(watched.output.substr(watched.output.size() - 4), "\r\x1b[K") << "the bar stays";
}

}  // namespace
