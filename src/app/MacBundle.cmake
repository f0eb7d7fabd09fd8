# Makes the program the bundle Burnwick.app, with its icon and the two pictures that the backend draws. docs/macos.md
# has the steps from there to a signed disk image.
set(pictures ${PROJECT_BINARY_DIR}/pictures)
set(icons ${PROJECT_SOURCE_DIR}/data/icons)
set(bundle_files ${pictures}/Burnwick.icns ${pictures}/bwIcon.png ${pictures}/bwIcon@2x.png
    ${pictures}/settings.png ${pictures}/settings@2x.png)

add_executable(burnwick-bundle-pictures ${PROJECT_SOURCE_DIR}/packaging/macos/bundle-pictures.cpp)
target_link_libraries(burnwick-bundle-pictures PRIVATE burnwick_warnings Qt6::Gui Qt6::Svg)
add_custom_command(OUTPUT ${bundle_files}
    COMMAND burnwick-bundle-pictures ${icons} ${pictures}
    COMMAND iconutil --convert icns ${pictures}/Burnwick.iconset
    DEPENDS ${icons}/burnwick.svg ${icons}/burnwick-symbolic.svg ${icons}/settings-symbolic.svg)

set_source_files_properties(${bundle_files} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
target_sources(burnwick PRIVATE ${bundle_files})
set_target_properties(burnwick PROPERTIES
    MACOSX_BUNDLE ON
    OUTPUT_NAME Burnwick
    MACOSX_BUNDLE_INFO_PLIST ${PROJECT_SOURCE_DIR}/packaging/macos/Info.plist.in)
