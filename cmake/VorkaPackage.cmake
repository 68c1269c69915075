# What cpack makes: a package for Debian of what is installed, and an archive of the source. scripts/package does both.
set(CPACK_PACKAGE_NAME vorka)
set(CPACK_PACKAGE_VENDOR "the Vorka developers")
set(CPACK_PACKAGE_CONTACT "Vorka developers <vorka@vorka.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "chess engine for the console, XBoard and UCI interfaces")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "xboard | pychess | scid | cutechess")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "\
Vorka plays chess at its own prompt, and in interfaces that speak XBoard's
protocol or UCI. Its search asks one yes/no question at a time and finds its
scores by bisection; personalities make it play from cautiously to recklessly,
and nearly every decision of its search is a named setting.

Pawn endings with few pawns are known exactly, and under UCI it reads Syzygy
tablebases. The program picks what was built for the processor by itself.")
# What a Debian package has and a plain installation does not: compressed texts, its changelog, its copyright.
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/finish.cmake")

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME "vorka-${PROJECT_VERSION}")
# What git leaves out, and what belongs to git itself.
set(anywhere "${PROJECT_SOURCE_DIR}/(.*/)?")
set(CPACK_SOURCE_IGNORE_FILES
    "${PROJECT_SOURCE_DIR}/\\.git(/|$)" "${PROJECT_SOURCE_DIR}/build/" "${PROJECT_SOURCE_DIR}/play/"
    "${anywhere}__pycache__/" "${anywhere}\\.pytest_cache/" "${anywhere}\\.cache/" "${anywhere}[^/]*\\.log$"
    "${anywhere}node_modules/"
    "${anywhere}logfile\\.([0-9][^/]*|max)$")
include(CPack)
