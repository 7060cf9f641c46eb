# Header-only packages of the build machine (CLI11, nlohmann-json), reachable from a
# cross-compiler without opening the build machine's whole include folder to it.
add_library(zdm_header_only INTERFACE)
set(view ${PROJECT_BINARY_DIR}/header-only)
foreach(package IN ITEMS CLI nlohmann)
  find_path(${package}_parent NAMES ${package} PATHS /usr/include REQUIRED
            NO_CMAKE_FIND_ROOT_PATH)
  file(MAKE_DIRECTORY ${view})
  file(CREATE_LINK ${${package}_parent}/${package} ${view}/${package} SYMBOLIC)
endforeach()
target_include_directories(zdm_header_only SYSTEM INTERFACE ${view})
