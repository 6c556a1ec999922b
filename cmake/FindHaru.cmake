# The PDF library libharu, which comes without a description for CMake: the target Haru::Haru.
find_path(HARU_INCLUDE_DIR hpdf.h)
find_library(HARU_LIBRARY hpdf)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Haru REQUIRED_VARS HARU_LIBRARY HARU_INCLUDE_DIR)
mark_as_advanced(HARU_LIBRARY HARU_INCLUDE_DIR)
if(Haru_FOUND AND NOT TARGET Haru::Haru)
  add_library(Haru::Haru UNKNOWN IMPORTED)
  set_target_properties(Haru::Haru PROPERTIES
    IMPORTED_LOCATION ${HARU_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${HARU_INCLUDE_DIR})
endif()
