# bexlow_layer(NAME FILES folder/Name ... [HEADERS folder/Name ...] [LINKS target ...])
#
# One static library a layer. The headers of a layer are offered through a tree of links of its own, so that a file
# sees the headers of its own layer and of those that it links, and no other: a wrong include does not build.
function(bexlow_layer name)
  cmake_parse_arguments(arg "" "" "FILES;HEADERS;LINKS" ${ARGN})
  set(tree ${CMAKE_BINARY_DIR}/layers/${name})
  foreach(file IN LISTS arg_FILES)
    list(APPEND sources ${file}.cpp)
  endforeach()
  foreach(file IN LISTS arg_FILES arg_HEADERS)
    if(NOT EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${file}.h)  # a screen has none
      continue()
    endif()
    list(APPEND sources ${file}.h)
    get_filename_component(folder ${file} DIRECTORY)
    file(MAKE_DIRECTORY ${tree}/${folder})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${file}.h ${tree}/${file}.h SYMBOLIC)
  endforeach()
  add_library(bexlow_${name} STATIC ${sources})
  target_include_directories(bexlow_${name} PUBLIC ${tree})
  target_link_libraries(bexlow_${name} PRIVATE bexlow_options PUBLIC ${arg_LINKS})
endfunction()
