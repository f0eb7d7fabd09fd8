# Compresses, in a package that is being made, the documents that a Debian package has compressed.
file(GLOB_RECURSE documents LIST_DIRECTORIES OFF
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/share/man/*.[1-9]
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/share/doc/*/changelog)
if(NOT documents)
    message(FATAL_ERROR "No documents below ${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
endif()
execute_process(COMMAND gzip --best --no-name ${documents} COMMAND_ERROR_IS_FATAL ANY)
