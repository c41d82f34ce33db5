# What an installation consists of, in three components that are three Debian packages: the library, what is needed to
# build against it, and the program vynhost.

# Debian's own place, which its linker, CMake and pkg-config search below /usr/local as well as below /usr.
# A place that was asked for stays as it is: set would make it absolute.
if(NOT DEFINED CACHE{CMAKE_INSTALL_LIBDIR} AND EXISTS /etc/debian_version AND CMAKE_LIBRARY_ARCHITECTURE)
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Where libraries go, below the prefix")
endif()
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(VYN_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/vynaudiofilterhost)
set(VYN_DOC_DIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/libvynaudiofilterhost)

install(TARGETS vynaudiofilterhost EXPORT vynaudiofilterhostTargets
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS vynhost RUNTIME COMPONENT program)

# A program that can't run here can't tell of itself.
if(NOT CMAKE_CROSSCOMPILING)
  add_subdirectory(${PROJECT_SOURCE_DIR}/apps/vynhost/manual ${PROJECT_BINARY_DIR}/apps/vynhost/manual)
  set(manual ${PROJECT_BINARY_DIR}/apps/vynhost/manual)
  install(FILES ${manual}/vynhost.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
  install(FILES ${manual}/vynhost.bash RENAME vynhost COMPONENT program
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions)
  install(FILES ${manual}/vynhost.fish COMPONENT program
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/fish/vendor_completions.d)
  # Debian's zsh reads its packages' functions here, and a local one's in site-functions.
  install(FILES ${manual}/vynhost.zsh RENAME _vynhost COMPONENT program
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/zsh/vendor-completions)
endif()

install(CODE "
  set(VYN_SOURCE_DIR \"${PROJECT_SOURCE_DIR}\")
  set(VYN_HEADER_FOLDER \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_INCLUDEDIR}\")" COMPONENT development)
install(SCRIPT ${CMAKE_CURRENT_LIST_DIR}/InstallHeaders.cmake COMPONENT development)

install(EXPORT vynaudiofilterhostTargets
  NAMESPACE vynaudiofilterhost:: DESTINATION ${VYN_PACKAGE_DIR} COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/vynaudiofilterhostConfig.cmake.in
  ${PROJECT_BINARY_DIR}/vynaudiofilterhostConfig.cmake INSTALL_DESTINATION ${VYN_PACKAGE_DIR})
# Before 1.0 each minor version may break what the one before promised.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vynaudiofilterhostConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/vynaudiofilterhostConfig.cmake ${PROJECT_BINARY_DIR}/vynaudiofilterhostConfigVersion.cmake
  DESTINATION ${VYN_PACKAGE_DIR} COMPONENT development)

# The prefix is known when it is installed, and not before.
install(CODE "
  set(PROJECT_NAME \"${PROJECT_NAME}\")
  set(PROJECT_DESCRIPTION \"${PROJECT_DESCRIPTION}\")
  set(PROJECT_VERSION ${PROJECT_VERSION})
  set(VYN_PC_LIBDIR \"\\\${prefix}/${CMAKE_INSTALL_LIBDIR}\")
  set(VYN_PC_INCLUDEDIR \"\\\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}\")
  configure_file(${CMAKE_CURRENT_LIST_DIR}/vynaudiofilterhost.pc.in
    ${PROJECT_BINARY_DIR}/vynaudiofilterhost.pc @ONLY)
  file(INSTALL ${PROJECT_BINARY_DIR}/vynaudiofilterhost.pc
    DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig\")" COMPONENT development)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${VYN_DOC_DIR} COMPONENT development)
# The examples use it, and an application may take it over.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/apps/guard DESTINATION ${VYN_DOC_DIR}/examples COMPONENT development
  FILES_MATCHING PATTERN "*.h" PATTERN "*.cpp")
# As in the sources, so that the pages' links to each other hold.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${VYN_DOC_DIR} COMPONENT development
  FILES_MATCHING PATTERN "*.md")
install(FILES
  ${PROJECT_SOURCE_DIR}/ARCHITECTURE.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md ${PROJECT_SOURCE_DIR}/README.md
  DESTINATION ${VYN_DOC_DIR} COMPONENT development)
