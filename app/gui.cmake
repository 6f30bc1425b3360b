# The Qt program: presentation layer (zd_present), application (zd_app), and `zendrite`.
find_package(Qt6 REQUIRED COMPONENTS Widgets Svg OpenGLWidgets PrintSupport)

file(GLOB present_srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/qt/*.cpp)
add_library(zd_present STATIC ${present_srcs})
target_include_directories(zd_present PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(zd_present PUBLIC zd_support Qt6::Widgets PRIVATE Qt6::Svg Qt6::PrintSupport Qt6::OpenGLWidgets zd_warnings)

file(GLOB app_srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/main/*.cpp)
list(FILTER app_srcs EXCLUDE REGEX "/main/main\\.cpp$")
# With the plot engine in the tree, it draws; otherwise the shell's own redraw keeps the title screen.
set(zd_with_plot 0)
if(TARGET zd_graphics AND EXISTS ${PROJECT_SOURCE_DIR}/graphics/plot_remake.cpp)
  set(zd_with_plot 1)
  list(FILTER app_srcs EXCLUDE REGEX "/main/redraw\\.cpp$")
endif()
add_library(zd_app STATIC ${app_srcs})
target_include_directories(zd_app PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(zd_app PUBLIC zd_present zd_store zd_calc zd_peaks zd_crystal zd_extprog zd_instrument zd_patterns zd_support PRIVATE zd_warnings)
target_compile_definitions(zd_app PRIVATE ZD_WITH_PLOT=${zd_with_plot})
if(zd_with_plot)
  target_link_libraries(zd_app PUBLIC zd_graphics)
endif()

add_executable(zendrite ${CMAKE_CURRENT_SOURCE_DIR}/main/main.cpp)
target_link_libraries(zendrite PRIVATE zd_app zd_warnings)
set_target_properties(zendrite PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/app)

# The program, its menu entry and the file types it opens (`cmake --install`).
install(TARGETS zendrite RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/desktop/zendrite.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/desktop/zendrite-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
        RENAME zendrite.xml)

# The verb render of zendrite-batch draws with the plot engine on the Qt layer, off-screen.
if(zd_with_plot)
  target_sources(zendrite-batch PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/batch/verb_render.cpp
                                        ${CMAKE_CURRENT_SOURCE_DIR}/batch/verb_chart.cpp)
  target_link_libraries(zendrite-batch PRIVATE zd_app)
endif()
