# The host of the web services is a program's own and stands in one small object, so that programs of one tree share all
# other objects.
function(bromvale_web_host name host)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/generated/${name}.cpp CONTENT
    "#include \"core/version.h\"\n\nnamespace bromvale {\nconst char* const kWebHost = \"${host}\";\n}\n")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/generated/${name}.cpp)
  target_link_libraries(${name} PUBLIC bromvale_options)
endfunction()

bromvale_web_host(web_host "${BROMVALE_WEB_HOST}")
