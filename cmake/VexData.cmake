# The text files that the programs read: beside them in the build tree, so that programs and tests
# run from there, and in their places when installed. The library looks for VexDb.cmd beside the
# program and nowhere else.

configure_file(${PROJECT_SOURCE_DIR}/data/VexDb.cmd ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/VexDb.cmd
               COPYONLY)
configure_file(${PROJECT_SOURCE_DIR}/data/vexdb.msg ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/vexdb.msg
               COPYONLY)
install(FILES ${PROJECT_SOURCE_DIR}/data/VexDb.cmd DESTINATION ${CMAKE_INSTALL_BINDIR})
