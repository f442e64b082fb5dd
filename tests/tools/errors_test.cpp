#include "error.h"
#include "named_type.h"
#include "tools/tool.h"

namespace {

using Errors = ToolTest;

struct BadCommand {
  const char* arguments;
  std::vector<std::string> mentions;
};

// frame.raw holds 640 x 480 pixels of 16 bits.
const BadCommand kBadCommands[] = {
    {"", {"Usage", "convert"}},
    {"transmogrify", {"transmogrify"}},
    {"convert", {"SOURCE"}},
    {"convert frame.raw", {"DESTINATION"}},
    {"convert frame.raw out.bmp --from BayerRGB10", {"--size"}},
    {"convert frame.raw out.bmp --size 640x480", {"--from"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --frobnicate", {"--frobnicate"}},

    {"convert frame.raw out.bmp --from Bayer10 --size 640x480", {"--from", "'Bayer10'", "'BayerGR10'"}},
    {"convert frame.raw out.bmp --from 0x31337 --size 640x480", {"--from", "'0x31337'"}},
    {"convert frame.raw out.bmp --from 0x20011x --size 640x480", {"--from", "'0x20011x'"}},
    {"convert frame.raw out.bmp --from 'Bayer RGB14-bits' --size 640x480", {"--from", "0x20016", "0x20020"}},
    {"synth out.raw --type Grayscale4 --size 640x480", {"--type", "Grayscale4", "Grayscale"}},

    {"convert frame.raw out.bmp --from BayerRG10 --size 640", {"--size", "'640'"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 0x480", {"--size", "'0x480'"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x-1", {"--size", "'640x-1'"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 65535x65535", {"--size", "'65535x65535'", "268435456"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 99999999999999999999x1", {"--size", "65535"}},

    {"convert frame.raw out.bmp --from BayerRG10 --size 640x479", {"SOURCE", "614400", "613120", "640x480"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 111x111", {"SOURCE", "614400", "24642", "640x480"}},
    {"convert frame.raw out.bmp --from BayerRG8 --size 640x480", {"SOURCE", "614400", "307200", "640x960"}},
    {"convert empty.raw out.bmp --from BayerRG8 --size 1x1", {"SOURCE", "0 bytes", "takes 1"}},
    {"convert missing.raw out.bmp --from BayerRG8 --size 1x1", {"SOURCE", "'missing.raw'"}},
    {"convert . out.bmp --from BayerRG8 --size 1x1", {"SOURCE", "'.'", "directory"}},

    {"convert frame.raw out.raw --from BayerRG10 --size 640x480", {"--to"}},
    {"convert frame.raw out.raw --from BayerRG10 --to YUV8 --size 640x480",
     {"--to", "0x40001", "0x420006", "more that `lmimaging converters --from 0x20011` lists"}},
    {"convert frame.raw out.bmp --from BayerRG10 --to YUV10 --size 640x480", {"--to", "0x40002", "0x10001"}},
    {"convert frame.raw out.pgm --from BayerRG10 --to RGB8 --size 640x480", {"DESTINATION", "0x420002", ".ppm"}},
    {"convert frame.raw out.jpg --from BayerRG10 --to RGB8 --size 640x480", {"DESTINATION", "'out.jpg'", ".png, .tif"}},
    {"convert frame.JPEG out.png --from BayerRG10 --size 640x480", {"SOURCE", "'frame.JPEG'", ".ppm"}},
    {"synth out.webp --type RGB8 --size 4x4", {"DESTINATION", "'out.webp'", ".raw"}},
    {"convert frame.raw - --from BayerRG10 --size 640x480", {"--to", "standard output takes raw frames"}},
    {"convert - --output out --from BayerRG10 --size 640x480 < frame.raw", {"SOURCE", "'-'", "--output"}},
    {"convert - out.png --from BayerRG10 --size 640x480 < tiny.raw", {"SOURCE", "'-'", "614400"}},
    {"convert - out.png < frame.raw", {"--from", "'-'"}},
    {"convert frame.raw - --from BayerRG10 --to RGB8 --size 640x480 > /dev/full", {"DESTINATION", "standard output"}},
    {"convert frame.raw out.png --from BayerRG10 --size 640x480 --depth 12", {"--depth", "'12'", "full|8"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --bayer RR", {"--bayer", "'RR'", "GR|GB|RG|BG"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --demosaic best", {"--demosaic", "block|bilinear"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --field-order odd", {"--field-order", "top|bottom"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --gain 1,2", {"--gain", "'1,2'", "R,G,B"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --gain 1,2,nan", {"--gain", "nan"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --gain=-1,1,1", {"--gain", "'-1,1,1'"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --offset 0,0,256", {"--offset", "255"}},

    {"convert frame.raw a.bmp b.bmp --from BayerRG10 --size 640x480", {"DESTINATION", "'b.bmp'", "--output DIR"}},
    {"convert frame.raw out.bmp --as png --from BayerRG10 --size 640x480", {"--as", "--output"}},
    {"convert frame.raw --output . --as gif --from BayerRG10 --size 640x480",
     {"--as", "'gif'", "png|tif|tiff|pgm|ppm|bmp|raw"}},
    {"convert frame.raw --output . --as raw --to RGB8 --from BayerRG10 --size 640x480", {"--output", "'frame.raw'"}},
    {"convert frame.raw ./frame.raw --output out --from BayerRG10 --size 640x480", {"'out/frame.png'"}},
    {"convert frame.raw --output frame.raw/x --from BayerRG10 --size 640x480", {"--output", "frame.raw/x"}},
    {"convert frame.raw --output out --jobs 0 --from BayerRG10 --size 640x480", {"--jobs", "'0'", "1 to 256"}},
    {"convert frame.raw out.bmp --threads 257 --from BayerRG10 --size 640x480", {"--threads", "'257'", "1 to 256"}},
    {"convert picture.png out.bmp --size 4x4", {"--size", "'picture.png'"}},
    {"convert picture.png out.raw", {"--to", "missing"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x160", {"SOURCE", "3 frames", "--frames"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x160 --frames 3", {"--frames", "'3'", "0 to 2"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x160 --frames 2-1", {"--frames", "'2-1'", "all"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x470 --frames all", {"SOURCE", "1 and 12800 bytes"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --line-size 1279", {"--line-size", "'1279'", "1280"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --line-size 0", {"--line-size", "'0'", "1048576"}},
    {"convert frame.raw out.bmp --from BayerRG10 --size 640x480 --line-size 1281", {"614400", "lines of 1281"}},
    {"convert tiny.raw out.bmp --from BayerRG10 --size 1x1", {"SOURCE", "'tiny.raw'", "2 x 2"}},

    {"convert frame.raw out.bmp --from BayerRGB10 --size 640x480", {"--bayer", "GR|RG|GB|BG", "0x20011"}},
    {"convert frame.raw out.bmp --from Mono10 --bayer GR --size 640x480", {"--bayer", "0x10002"}},
    {"convert frame.raw out.bmp --from Mono10 --field-order bottom --size 640x480", {"--field-order", "0x10002"}},
    {"convert frame.raw out.bmp --from BayerRG10 --bayer GB --size 640x480", {"--bayer", "'GB'", "'BayerRG10'"}},
    {"convert frame.raw out.raw --from BayerRG10 --to BayerGR8 --size 640x480", {"'BayerRG10'", "'BayerGR8'"}},
    {"convert frame.raw out.bmp --from RGB14 --size 640x480", {"--from", "'RGB14'", "14 bits"}},
    {"convert frame.raw out.bmp --from Coord3D_A8 --size 640x480", {"--from", "no picture"}},
    {"convert frame.raw out.bmp --from PGAA --size 640x480", {"--from", "'PGAA'", "'pGAA'", "'pgAA'"}},
    {"convert frame.raw out.bmp --from 0x0230005E --size 640x480", {"--from", "'0x0230005E'", "14 bits"}},
    {"synth out.raw --size 4x4", {"--type", ".png"}},
    {"info Bayer", {"TYPE", "'Bayer'"}},

    {"convert frame.raw no/such/out.bmp --from BayerRG10 --size 640x480", {"DESTINATION", "'no/such/out.bmp'"}},
    {"convert frame.raw . --from BayerRG10 --to 0x420006 --size 640x480", {"DESTINATION", "directory"}},
    {"convert frame.raw /dev/full --from BayerRG10 --to 0x420006 --size 640x480", {"DESTINATION", "/dev/full"}},
    {"synth no/such/out.raw --type RGB24 --size 4x4", {"DESTINATION", "'no/such/out.raw'"}},
    {"--help > /dev/full", {"standard output"}},
    {"--version > /dev/full", {"standard output"}},
    {"convert --help > /dev/full", {"standard output"}},
    {"types > /dev/full", {"standard output"}},
    {"info Mono8 --json > /dev/full", {"standard output"}},
    {"converters > /dev/full", {"standard output"}},
    {"completion bash > /dev/full", {"standard output"}},
    {"manual > /dev/full", {"standard output"}},
    {"gallery frame.raw", {"DIR", "'frame.raw'"}},
    {"converters --from nothing-like-it", {"--from", "nothing-like-it"}},
};

TEST_F(Errors, AreToldAndLeaveNoFile) {
  const std::vector<std::string> before = [&] {
    Write("frame.raw", Bytes(640 * 480 * 2));
    Write("empty.raw", {});
    Write("tiny.raw", {0, 0});
    return Files();
  }();
  for (const BadCommand& command : kBadCommands) {
    const ToolResult result = Run(command.arguments);
    EXPECT_GT(result.exitCode, 0) << command.arguments;
    for (const std::string& mention : command.mentions) {
      EXPECT_NE(result.output.find(mention), std::string::npos)
          << command.arguments << "\nlacks " << mention << ": " << result.output;
    }
    EXPECT_EQ(Files(), before) << command.arguments;
  }
}

TEST_F(Errors, NamesOfTypesEndWithTheirText) {
  EXPECT_EQ(LmTool::FindNamedType("TYPE", "Mono8").id, 0x10001);
  EXPECT_THROW(LmTool::FindNamedType("TYPE", std::string("Mono8\0", 6)), LmTool::ToolError);
}

TEST_F(Errors, NoteOptionsWithoutEffect) {
  struct Case {
    const char* arguments;
    bool noted;
  };
  const Case cases[] = {{"out.bmp --from Grayscale8 --size 3x1", true},
                        {"out.raw --from RGB8 --to RGB8 --size 1x1", true},
                        {"out.raw --from RGB8 --to BGR8 --size 1x1", false},
                        {"out.bmp --from BGR8 --size 1x1", false}};
  Write("frame.raw", {1, 2, 3});
  for (const Case& c : cases) {
    const ToolResult result = Run(std::string("convert frame.raw --gain 2,2,2 ") + c.arguments);
    EXPECT_EQ(result.exitCode, 0) << result.output;
    EXPECT_EQ(result.output.find("--gain") != std::string::npos, c.noted) << c.arguments << result.output;
  }
  RunSilently("convert out.bmp balanced.bmp --gain 1,2,3");
  RunSilently("convert balanced.bmp balanced.raw --to RGB8");
  EXPECT_EQ(Read("balanced.raw"), (Bytes{6, 8, 6}));
}

}  // namespace
