// The calls of Pango, found when they are first needed, so that no process that does without them loads it.
#ifndef LAMPBLACK_QUICKDRAW_PANGO_H
#define LAMPBLACK_QUICKDRAW_PANGO_H

#include <pango/pangoft2.h>

namespace lampblack::quickdraw {

struct PangoCalls {
#define LAMPBLACK_PANGO_CALLS(CALL)                                                                          \
    CALL(pango_ft2_font_map_new)                                                                             \
    CALL(pango_ft2_font_map_set_resolution)                                                                  \
    CALL(pango_ft2_render_layout_line)                                                                       \
    CALL(pango_font_map_create_context)                                                                      \
    CALL(pango_font_description_new)                                                                         \
    CALL(pango_font_description_set_family)                                                                  \
    CALL(pango_font_description_set_weight)                                                                  \
    CALL(pango_font_description_set_style)                                                                   \
    CALL(pango_font_description_set_absolute_size)                                                           \
    CALL(pango_font_description_free)                                                                        \
    CALL(pango_layout_new)                                                                                   \
    CALL(pango_layout_set_text)                                                                              \
    CALL(pango_layout_set_font_description)                                                                  \
    CALL(pango_layout_set_single_paragraph_mode)                                                             \
    CALL(pango_layout_set_attributes)                                                                        \
    CALL(pango_layout_get_line_readonly)                                                                     \
    CALL(pango_layout_line_get_pixel_extents)                                                                \
    CALL(pango_layout_get_iter)                                                                              \
    CALL(pango_layout_iter_get_index)                                                                        \
    CALL(pango_layout_iter_get_cluster_extents)                                                              \
    CALL(pango_layout_iter_next_cluster)                                                                     \
    CALL(pango_layout_iter_free)                                                                             \
    CALL(pango_attr_list_new)                                                                                \
    CALL(pango_attr_list_insert)                                                                             \
    CALL(pango_attr_list_unref)                                                                              \
    CALL(pango_attr_letter_spacing_new)
#define LAMPBLACK_PANGO_CALL(name) decltype(&::name) name = nullptr;
    LAMPBLACK_PANGO_CALLS(LAMPBLACK_PANGO_CALL)
#undef LAMPBLACK_PANGO_CALL
};

// Null when it is not installed.
const PangoCalls* FindPango();

} // namespace lampblack::quickdraw

#endif
