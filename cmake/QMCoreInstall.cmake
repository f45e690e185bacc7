# Install rules: the libraries, the public headers (not test support), a CMake package
# (find_package(QMCore) gives QMCore::qmcore and one QMCore::<layer> per layer) and qmcore.pc.
include(CMakePackageConfigHelpers)

get_property(qm_layers GLOBAL PROPERTY QM_LAYERS)
install(TARGETS ${qm_layers} qmcore
        EXPORT QMCoreTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/qmcore/
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qmcore
        FILES_MATCHING PATTERN "*.hpp"
        PATTERN "testing" EXCLUDE
        PATTERN "tables" EXCLUDE)

set(qm_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QMCore)
install(EXPORT QMCoreTargets NAMESPACE QMCore:: DESTINATION ${qm_cmake_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/QMCoreConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/QMCoreConfig.cmake
                              INSTALL_DESTINATION ${qm_cmake_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QMCoreConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QMCoreConfig.cmake
              ${PROJECT_BINARY_DIR}/QMCoreConfigVersion.cmake
        DESTINATION ${qm_cmake_dir})

# pkg-config: the layers highest first, so that a static link resolves every symbol.
set(qm_pc_libs "")
foreach(layer geo persistence files formatting provider units strings platform)
  if(TARGET qmcore_${layer})
    string(APPEND qm_pc_libs " -lqmcore_${layer}")
  endif()
endforeach()
if(QM_ENABLE_DEBUG_LOG)
  set(qm_pc_debug_log 1)
else()
  set(qm_pc_debug_log 0)
endif()
# The prefix relative to the .pc file, so that the package may be installed anywhere.
file(RELATIVE_PATH qm_pc_up "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(${PROJECT_SOURCE_DIR}/cmake/qmcore.pc.in ${PROJECT_BINARY_DIR}/qmcore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qmcore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
