# Windows-1252 in the literals, under clang: copies of some sources stand in their places (tools/fuzz/clang_literals). They
# are looked after at each build, before anything is compiled.
set(literals ${CMAKE_BINARY_DIR}/literals)
list(TRANSFORM literal_folders PREPEND ${CMAKE_SOURCE_DIR}/)
set(literal_command ${CMAKE_SOURCE_DIR}/tools/fuzz/clang_literals ${literals} ${literal_folders})
execute_process(COMMAND ${literal_command} COMMAND_ERROR_IS_FATAL ANY)
add_custom_target(clang_literals COMMAND ${literal_command} VERBATIM)
add_dependencies(bromvale_options clang_literals)
target_compile_options(bromvale_options INTERFACE "SHELL:-Xclang -ivfsoverlay -Xclang ${literals}/overlay.yaml")
