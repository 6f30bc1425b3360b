add_library(zd_warnings INTERFACE)
target_compile_options(zd_warnings INTERFACE -Wall -Wextra)
