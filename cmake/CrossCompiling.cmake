# Cross builds (Windows with MinGW-w64) find packages only in the target's tree. The header-only
# packages we use (nlohmann-json, CLI11) are installed for the build machine, and their headers
# serve any target. They are made visible through a small tree of links in the build folder that
# holds just their CMake package files and header folders: putting the build machine's whole
# include folder on the target's include path would mix its C library headers into the build.

set(VELKAPI_HEADER_PACKAGES ${PROJECT_BINARY_DIR}/header-only-packages)

# velkapi_header_only_package(<package> <header folder>): links the package's CMake files and its
# header folder (relative to an include folder) into VELKAPI_HEADER_PACKAGES.
function(velkapi_header_only_package package header_folder)
  foreach(prefix /usr /usr/local)
    foreach(config_folder share/cmake lib/cmake share/${package}/cmake)
      set(config_dir ${prefix}/${config_folder}/${package})
      if(EXISTS ${config_dir}/${package}Config.cmake AND EXISTS ${prefix}/include/${header_folder})
        foreach(relative ${config_folder}/${package} include/${header_folder})
          set(link ${VELKAPI_HEADER_PACKAGES}/${relative})
          if(NOT EXISTS ${link})
            get_filename_component(parent ${link} DIRECTORY)
            file(MAKE_DIRECTORY ${parent})
            file(CREATE_LINK ${prefix}/${relative} ${link} SYMBOLIC)
          endif()
        endforeach()
        return()
      endif()
    endforeach()
  endforeach()
  message(FATAL_ERROR "The package ${package} is not installed (scripts/install-deps.sh installs it)")
endfunction()

if(CMAKE_CROSSCOMPILING)
  velkapi_header_only_package(nlohmann_json nlohmann)
  velkapi_header_only_package(CLI11 CLI)
  list(APPEND CMAKE_FIND_ROOT_PATH ${VELKAPI_HEADER_PACKAGES})
endif()
