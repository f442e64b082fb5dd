// Makes a picture of a raw frame in C: white balance from the frame, demosaicing along edges, sRGB.
// Usage: convert_frame FRAME.raw FORMAT WIDTH HEIGHT PICTURE.ppm, such as: frame.raw BayerRG12p 1920 1080 picture.ppm
#include <LmImagingLib/lmimaging.h>
#include <stdio.h>
#include <stdlib.h>

static void Fail(const char* message) {
  fprintf(stderr, "convert_frame: %s\n", message);
  exit(EXIT_FAILURE);
}

// Every call reports a code, and leaves a sentence for people.
static void Check(LmiCode code) {
  if (code != LMI_OK) Fail(lmiMessage());
}

// An image of a size, in memory that the caller frees.
static LmiImage MakeImage(int64_t type, size_t width, size_t height) {
  LmiImage image = {.structSize = sizeof image, .type = type, .width = width, .height = height};
  Check(lmiRequiredSize(type, width, height, 0, &image.size));
  image.data = malloc(image.size);
  if (image.data == NULL) Fail("out of memory");
  return image;
}

static size_t NumberIn(const char* text) {
  char* end = NULL;
  const long number = strtol(text, &end, 10);
  if (number <= 0 || *end != 0) Fail("width and height are whole numbers above 0");
  return (size_t)number;
}

int main(int argc, char** argv) {
  if (argc != 6) Fail("usage: convert_frame FRAME.raw FORMAT WIDTH HEIGHT PICTURE.ppm");
  const size_t width = NumberIn(argv[3]);
  const size_t height = NumberIn(argv[4]);

  LmiFormat format = {.structSize = sizeof format};
  Check(lmiFindFormat(argv[2], &format));
  LmiImage frame = MakeImage(format.type, width, height);
  FILE* const in = fopen(argv[1], "rb");
  if (in == NULL || fread(frame.data, 1, frame.size, in) != frame.size) Fail("the frame cannot be read whole");
  fclose(in);

  LmiDevelopmentSettings settings = {.structSize = sizeof settings};
  LmiWhiteBalanceOptions options = {.structSize = sizeof options, .flags = format.flags};
  LmiWhiteBalance light = {.structSize = sizeof light};
  Check(lmiEstimateWhiteBalance(&frame, &options, &light));
  for (int i = 0; i < 3; ++i) settings.gains[i] = light.gains[i];
  if (!light.isFound) fprintf(stderr, "convert_frame: %s\n", lmiMessage());

  LmiFormat rgb = {.structSize = sizeof rgb};
  Check(lmiFindFormat("RGB8", &rgb));
  LmiImage picture = MakeImage(rgb.type, width, height);
  LmiDevelopment* development = NULL;
  Check(lmiCreateDevelopment(&settings, &development));
  const LmiOptions how = {.structSize = sizeof how, .flags = format.flags, .threads = 4};
  Check(lmiDevelop(development, &frame, &picture, &how));
  lmiFreeDevelopment(development);

  FILE* const out = fopen(argv[5], "wb");
  if (out == NULL) Fail("the picture cannot be written");
  fprintf(out, "P6\n%zu %zu\n255\n", width, height);
  const int isWritten = fwrite(picture.data, 1, picture.size, out) == picture.size;
  if (fclose(out) != 0 || !isWritten) Fail("the picture cannot be written");
  printf("%s: %zu x %zu, gains %.3f %.3f %.3f\n", argv[5], width, height, light.gains[0], light.gains[1],
         light.gains[2]);
  free(frame.data);
  free(picture.data);
  return EXIT_SUCCESS;
}
