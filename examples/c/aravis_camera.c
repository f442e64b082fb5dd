// Saves a picture of each pixel format of a camera that Aravis finds, and names those that the library does not know.
// Usage: aravis_camera DIRECTORY [CAMERA]; without a camera, Aravis' fake camera is taken
#include <LmImagingLib/lmimaging_aravis.h>
#include <stdio.h>
#include <stdlib.h>

static void Fail(const char* message) {
  fprintf(stderr, "aravis_camera: %s\n", message);
  exit(EXIT_FAILURE);
}

static void CheckCamera(GError* error) {
  if (error != NULL) Fail(error->message);
}

// Converts an image to RGB and writes it to a PPM file.
static void Save(const LmiCameraImage* frame, const char* path) {
  LmiFormat rgb = {.structSize = sizeof rgb};
  LmiImage picture = {.structSize = sizeof picture, .width = frame->image.width, .height = frame->image.height};
  LmiOptions options = {.structSize = sizeof options, .flags = frame->flags};
  const int isMosaic = (frame->flags & (LMI_BAYER_GR | LMI_BAYER_GB | LMI_BAYER_RG | LMI_BAYER_BG)) != 0;
  if (isMosaic) options.flags |= LMI_ADAPTIVE;
  if (lmiFindFormat("RGB8", &rgb) != LMI_OK) Fail(lmiMessage());
  picture.type = rgb.type;
  if (lmiRequiredSize(rgb.type, picture.width, picture.height, 0, &picture.size) != LMI_OK) Fail(lmiMessage());
  picture.data = malloc(picture.size);
  if (picture.data == NULL) Fail("out of memory");
  if (lmiConvert(&frame->image, &picture, &options) != LMI_OK) Fail(lmiMessage());

  FILE* const out = fopen(path, "wb");
  if (out == NULL) Fail("a picture cannot be written");
  fprintf(out, "P6\n%zu %zu\n255\n", picture.width, picture.height);
  const int isWritten = fwrite(picture.data, 1, picture.size, out) == picture.size;
  if (fclose(out) != 0 || !isWritten) Fail("a picture cannot be written");
  free(picture.data);
}

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) Fail("usage: aravis_camera DIRECTORY [CAMERA]");
  if (argc == 2) arv_enable_interface("Fake");
  GError* error = NULL;
  ArvCamera* const camera = arv_camera_new(argc == 3 ? argv[2] : "Fake_1", &error);
  CheckCamera(error);

  guint count = 0;
  guint saved = 0;
  gint64* const codes = arv_camera_dup_available_pixel_formats(camera, &count, &error);
  CheckCamera(error);
  for (guint i = 0; i < count; ++i) {
    arv_camera_set_pixel_format(camera, (ArvPixelFormat)codes[i], &error);
    CheckCamera(error);
    const char* const name = arv_camera_get_pixel_format_as_string(camera, &error);
    CheckCamera(error);
    ArvBuffer* buffer = arv_camera_acquisition(camera, 2000000, &error);  // waits for two seconds
    CheckCamera(error);

    const LmiCameraImage frame = lmiArvImage(buffer);
    if (frame.reason == NULL) {
      gchar* const path = g_strdup_printf("%s/%s.ppm", argv[1], name);
      Save(&frame, path);
      printf("%s: %zu x %zu pixels, %s\n", name, frame.image.width, frame.image.height, path);
      g_free(path);
      ++saved;
    } else {
      printf("%s: %s\n", name, frame.reason);
    }
    g_clear_object(&buffer);
  }
  printf("%u of %u formats\n", saved, count);
  g_free(codes);
  g_object_unref(camera);
  return EXIT_SUCCESS;
}
