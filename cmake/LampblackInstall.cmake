# Installs the libraries, the headers, the resource tool, the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

set_target_properties(lampblack PROPERTIES EXPORT_NAME toolkit)
set_target_properties(lampblack-carbon PROPERTIES EXPORT_NAME carbon)
install(TARGETS lampblack lampblack-carbon rsrc rsrc-render EXPORT LampblackTargets)
install(DIRECTORY carbon/include/Carbon carbon/include/QuickTime DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY host/include/public/lampblack DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY toolkit/include/lampblack DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
foreach(folder window controls prefs graphics util)
  install(DIRECTORY toolkit/${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/lampblack FILES_MATCHING PATTERN *.h)
endforeach()

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/Lampblack)
install(EXPORT LampblackTargets NAMESPACE Lampblack:: DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/LampblackConfigVersion.cmake COMPATIBILITY SameMinorVersion)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/LampblackConfig.cmake CONTENT [[
include(${CMAKE_CURRENT_LIST_DIR}/LampblackTargets.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/LampblackApplication.cmake)
]] @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/LampblackConfig.cmake ${PROJECT_BINARY_DIR}/LampblackConfigVersion.cmake
  cmake/LampblackApplication.cmake DESTINATION ${package})

file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/lampblack.pc CONTENT [[
prefix=@CMAKE_INSTALL_PREFIX@
libdir=${prefix}/@CMAKE_INSTALL_LIBDIR@
includedir=${prefix}/@CMAKE_INSTALL_INCLUDEDIR@

Name: lampblack
Description: @PROJECT_DESCRIPTION@
Version: @PROJECT_VERSION@
Libs: -L${libdir} -llampblack -llampblack-carbon
Cflags: -I${includedir} -I${includedir}/lampblack -Wno-multichar -Dpascal= -Dnil=NULL
]] @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/lampblack.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
