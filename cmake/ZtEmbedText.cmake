# zt_embed_text(target name file): compiles the text of `file` into `target` as
# `extern const char name[]`, made again whenever the file changes.
function(zt_embed_text target name file)
    set(output ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    add_custom_command(OUTPUT ${output}
                       COMMAND ${CMAKE_COMMAND} -DINPUT=${file} -DOUTPUT=${output} -DNAME=${name}
                               -P ${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake
                       DEPENDS ${file} ${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake
                       COMMENT "Embedding ${file}")
    target_sources(${target} PRIVATE ${output})
endfunction()
