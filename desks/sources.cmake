target_sources(kodms_desk_objects PRIVATE
  "${PROJECT_SOURCE_DIR}/desks/common/StyleSheets.h")
