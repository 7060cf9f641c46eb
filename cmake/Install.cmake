# Installed form: the library and the embedded host with their headers, a CMake package
# (find_package(zdm), targets zdm::zdm, zdm::document, zdm::drawing) and a pkg-config file for each
# of them.
include(CMakePackageConfigHelpers)

install(TARGETS zdm zdm_document zdm_drawing EXPORT zdmTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
foreach(folder IN ITEMS platform zdm document drawing)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}
          DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zdm
          FILES_MATCHING PATTERN "*.h" PATTERN "*.inl" PATTERN "*.def" PATTERN portable EXCLUDE)
endforeach()
if(NOT WIN32)
  # What ole.h includes away from Windows; the rest of the folder is the library's own.
  foreach(header IN ITEMS Bstr Guid SafeArray Storage Stream StringCompare TaskMemory Types VarTypes
                          Variant)
    install(FILES ${PROJECT_SOURCE_DIR}/platform/ole/portable/${header}.h
            DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zdm/platform/ole/portable)
  endforeach()
endif()
install(EXPORT zdmTargets NAMESPACE zdm:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zdm)

write_basic_package_version_file(${PROJECT_BINARY_DIR}/zdmConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_SOURCE_DIR}/cmake/zdmConfig.cmake
              ${PROJECT_BINARY_DIR}/zdmConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zdm)

file(RELATIVE_PATH ZDM_PC_TO_PREFIX /x/${CMAKE_INSTALL_LIBDIR}/pkgconfig /x)
configure_file(${PROJECT_SOURCE_DIR}/cmake/zdm.pc.in ${PROJECT_BINARY_DIR}/zdm.pc @ONLY)
set(requires zdm)
foreach(part IN ITEMS document drawing)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/zdm-part.pc.in ${PROJECT_BINARY_DIR}/zdm-${part}.pc
                 @ONLY)
  set(requires zdm-${part})
endforeach()
foreach(package IN ITEMS zdm zdm-document zdm-drawing)
  install(FILES ${PROJECT_BINARY_DIR}/${package}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
