# The programs whose starts are compared; a peer that is not installed is left out.
find_package(X11 REQUIRED)
target_link_libraries(start_bench PRIVATE X11::X11 X11::Xext)
target_compile_definitions(start_bench PRIVATE START_PROGRAMS="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")

function(start_program name source)
  add_executable(start_${name} ${CMAKE_CURRENT_SOURCE_DIR}/start/${source})
  target_link_libraries(start_${name} PRIVATE ${ARGN})
  add_dependencies(start_bench start_${name})
endfunction()

start_program(limit limit.cpp X11::X11)
start_program(sdl sdl.cpp PkgConfig::SDL2)
start_program(lampblack lampblack.cpp Lampblack::carbon)

find_library(FLTK_LIBRARY fltk)
find_path(FLTK_INCLUDE FL/Fl.H)
if(FLTK_LIBRARY AND FLTK_INCLUDE)
  start_program(fltk fltk.cpp ${FLTK_LIBRARY})
  target_include_directories(start_fltk SYSTEM PRIVATE ${FLTK_INCLUDE})
endif()

find_package(Qt6 QUIET COMPONENTS Widgets)
if(TARGET Qt6::Widgets)
  start_program(qt qt.cpp Qt6::Widgets)
endif()

pkg_check_modules(GTK4 IMPORTED_TARGET gtk4)
if(TARGET PkgConfig::GTK4)
  start_program(gtk gtk.c PkgConfig::GTK4)
endif()
