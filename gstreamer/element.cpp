// The element as a class of GObject.
#include "element.h"

#include "LmImagingLib/Extended.h"
#include "formats.h"
#include "properties.h"
#include "state.h"

namespace LmGst {

using namespace LmImagingLib;

namespace {

GObjectClass* gParent = nullptr;  // set once, with the class

void SetElementProperty(GObject* object, guint property, const GValue* value, GParamSpec*) {
  State& state = StateOf(object);
  {
    const Lock lock(object);
    const bool wasFound = state.settings.balance != Balance::kOff;
    SetProperty(state.settings, property, value);
    if (wasFound && state.settings.balance == Balance::kOff) {  // keeps the gains that were found
      state.settings.red = state.gains.red;
      state.settings.green = state.gains.green;
      state.settings.blue = state.gains.blue;
    }
    if (state.settings.balance == Balance::kOff) state.gains = state.settings.Colors().gain;
    state.hasNewSettings = true;
  }
  if (ChangesCaps(property)) gst_base_transform_reconfigure_src(reinterpret_cast<GstBaseTransform*>(object));
}

void GetElementProperty(GObject* object, guint property, GValue* value, GParamSpec*) {
  const Lock lock(object);
  GetProperty(StateOf(object).settings, StateOf(object).gains, property, value);
}

void Finalize(GObject* object) {
  delete reinterpret_cast<Element*>(object)->state;
  gParent->finalize(object);
}

void AddPad(GstElementClass* element, const char* name, GstPadDirection direction, GstCaps* caps) {
  gst_element_class_add_pad_template(element, gst_pad_template_new(name, direction, GST_PAD_ALWAYS, caps));
  gst_caps_unref(caps);
}

void InitClass(gpointer type, gpointer) {
  RegisterExtendedFormats();
  gParent = static_cast<GObjectClass*>(g_type_class_peek_parent(type));

  auto* const object = static_cast<GObjectClass*>(type);
  object->set_property = SetElementProperty;
  object->get_property = GetElementProperty;
  object->finalize = Finalize;
  InstallProperties(object);

  auto* const element = static_cast<GstElementClass*>(type);
  gst_element_class_set_static_metadata(
      element, "Raw frames to pictures", "Filter/Converter/Video",
      "Makes pictures of the raw frames of machine-vision cameras: unpacks, demosaics, and balances white",
      "LmImagingLib");
  AddPad(element, "sink", GST_PAD_SINK, SinkCaps());
  AddPad(element, "src", GST_PAD_SRC, SourceCaps());

  auto* const transform = static_cast<GstBaseTransformClass*>(type);
  InitNegotiation(*transform);
  InitStream(*transform);
  transform->passthrough_on_same_caps = FALSE;
}

void InitElement(GTypeInstance* instance, gpointer) {
  auto* const element = reinterpret_cast<Element*>(instance);
  element->state = new State;
  gst_video_info_init(&element->state->picture);
  gst_base_transform_set_qos_enabled(&element->base, TRUE);
}

}  // namespace

GType ElementType() {
  static const GType type =
      g_type_register_static_simple(GST_TYPE_BASE_TRANSFORM, "GstLmImagingConvert", sizeof(GstBaseTransformClass),
                                    InitClass, sizeof(Element), InitElement, static_cast<GTypeFlags>(0));
  return type;
}

}  // namespace LmGst
