if(BURNWICK_SANITIZE)
    add_compile_options(-fsanitize=${BURNWICK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${BURNWICK_SANITIZE})
endif()
