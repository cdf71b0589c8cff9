# What the page's module is made of besides its bindings; the tests compile it for their machine, too.
set(tools ${PROJECT_SOURCE_DIR}/tools)
set(engine_sources
  ${CMAKE_CURRENT_LIST_DIR}/session.cpp
  ${CMAKE_CURRENT_LIST_DIR}/tile_work.cpp
  ${tools}/failure.cpp
  ${tools}/filter_gains.cpp
  ${tools}/filter_recipe.cpp
  ${tools}/grey_levels.cpp
  ${tools}/kernel_filter.cpp
  ${tools}/plane_choice.cpp
  ${tools}/result_pels.cpp
  ${tools}/step_recipe.cpp)
