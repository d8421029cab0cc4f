# Libraries with the entries that register a component: one that works, one that fails, one that has none.
foreach(kind good failing empty)
  add_library(component_${kind} MODULE components/component_${kind}.cpp components/component_${kind}.def)
  set_target_properties(component_${kind} PROPERTIES PREFIX "")
  target_link_options(component_${kind} PRIVATE -static)
  target_compile_options(component_${kind} PRIVATE -Wall -Wextra)
endforeach()
target_compile_definitions(test_startup PRIVATE BROMVALE_COMPONENTS_DIR="Z:$<TARGET_FILE_DIR:component_good>")
add_dependencies(test_startup component_good component_failing component_empty)
