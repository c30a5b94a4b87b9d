# Lets TARGET carry the Chinese texts of the program NAME inside it: translations/NAME_zh.ts.
function(carry_chinese_texts target name)
    qt5_add_translation(translations "${CMAKE_CURRENT_SOURCE_DIR}/translations/${name}_zh.ts")
    set(resource "${CMAKE_CURRENT_BINARY_DIR}/${name}_translations.qrc")
    file(CONFIGURE OUTPUT "${resource}" CONTENT
        "<RCC><qresource prefix=\"/i18n\"><file>${name}_zh.qm</file></qresource></RCC>\n")
    # the format without the times of files: they would make two builds two
    qt5_add_resources(source "${resource}" OPTIONS --format-version 1)
    set_property(SOURCE ${source} APPEND PROPERTY OBJECT_DEPENDS "${translations}")
    target_sources(${target} PRIVATE ${translations} ${source})
endfunction()
