# Where the program and its information dictionary go.
#
# The build leaves info.json beside the program in build/PRESET. An installation keeps the two at a
# fixed distance, so that the program finds it from its own folder and the prefix can move:
#
#     PREFIX/bin/tessary-widgets
#     PREFIX/bin/tessary-widgets-desktop        # finds tessary-widgets beside itself
#     PREFIX/bin/tessary-widgets-feed
#     PREFIX/share/applications/, PREFIX/etc/xdg/autostart/, PREFIX/lib/systemd/user/
#                                               # which start it by its name, from the PATH;
#                                               # the feed's service knows where it was installed
#     PREFIX/share/icons/hicolor/scalable/apps/
#     PREFIX/share/tessary-widgets/info.json
#     PREFIX/share/tessary-widgets/schema/      # JSON Schemas, for writers of the files
#
# Include this after add_subdirectory(src); then `cmake --install build/release --prefix PREFIX`.
string(REPLACE "\\" "\\\\" TESSARY_APP_GROUP_JSON "${TESSARY_APP_GROUP}")
string(REPLACE "\"" "\\\"" TESSARY_APP_GROUP_JSON "${TESSARY_APP_GROUP_JSON}")
configure_file("${PROJECT_SOURCE_DIR}/data/info.json.in" "${PROJECT_BINARY_DIR}/info.json" @ONLY)

set_target_properties(tessary-widgets PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}")
if(TESSARY_DESKTOP)
  set_target_properties(tessary-widgets-desktop PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                                           "${PROJECT_BINARY_DIR}")
  install(TARGETS tessary-widgets-desktop RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  set(TESSARY_DESKTOP_DATA "${PROJECT_SOURCE_DIR}/data/desktop")
  install(FILES "${TESSARY_DESKTOP_DATA}/com.tessary.desktop.Widgets.desktop"
          DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
  install(FILES "${TESSARY_DESKTOP_DATA}/com.tessary.desktop.Widgets.svg"
          DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
  install(FILES "${TESSARY_DESKTOP_DATA}/autostart/com.tessary.desktop.Widgets.desktop"
          DESTINATION "${CMAKE_INSTALL_SYSCONFDIR}/xdg/autostart")
  install(FILES "${TESSARY_DESKTOP_DATA}/tessary-widgets-desktop.service"
          DESTINATION lib/systemd/user)
endif()
if(TESSARY_FEED)
  set_target_properties(tessary-widgets-feed PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                                        "${PROJECT_BINARY_DIR}")
  install(TARGETS tessary-widgets-feed RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  # What opens the widgets' links. Where no package is being made, whose own scripts do it, it is
  # made known at once.
  install(FILES "${PROJECT_SOURCE_DIR}/data/feed/com.tessary.desktop.Links.desktop"
          DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
  install(
    CODE "find_program(UPDATE_DESKTOP_DATABASE update-desktop-database)
          if(UPDATE_DESKTOP_DATABASE AND NOT DEFINED ENV{DESTDIR})
            execute_process(
              COMMAND \"\${UPDATE_DESKTOP_DATABASE}\" -q
                      \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/applications\")
          endif()")
  set(TESSARY_FEED_DATA "${PROJECT_SOURCE_DIR}/data/feed")
  # A service says where its program lies, which is known when the prefix is.
  install(CODE "
    get_filename_component(prefix \"\${CMAKE_INSTALL_PREFIX}\" ABSOLUTE)
    set(TESSARY_FEED_PROGRAM \"\${prefix}/${CMAKE_INSTALL_BINDIR}/tessary-widgets-feed\")
    configure_file(\"${TESSARY_FEED_DATA}/tessary-widgets-feed.service.in\"
                   \"${PROJECT_BINARY_DIR}/tessary-widgets-feed.service\" @ONLY)")
  install(FILES "${PROJECT_BINARY_DIR}/tessary-widgets-feed.service"
          DESTINATION lib/systemd/user)
  install(FILES "${TESSARY_FEED_DATA}/autostart/com.tessary.desktop.Feed.desktop"
          DESTINATION "${CMAKE_INSTALL_SYSCONFDIR}/xdg/autostart")
endif()
install(TARGETS tessary-widgets RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
install(FILES "${PROJECT_BINARY_DIR}/info.json"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/tessary-widgets")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/data/schema"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/tessary-widgets"
        FILES_MATCHING PATTERN "*.json")
