# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT

# What every target of this project is compiled with: C++20, warnings, and the
# sanitizers or the coverage instrumentation of the chosen preset.
function(vantix_configure_target target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    AUTOMOC ON)
  target_compile_options(${target} PRIVATE
    $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Wall -Wextra -Wpedantic -Wconversion>)
  # Doubles that are rounded twice in x87 registers would not be those of the library.
  if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86")
    target_compile_options(${target} PRIVATE
      "$<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-msse2;-mfpmath=sse>")
  endif()
  if(VANTIX_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE
      $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Werror>)
  endif()
  if(VANTIX_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${VANTIX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${VANTIX_SANITIZE})
  endif()
  if(VANTIX_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()

# vantix_precompile_headers(TARGET HEADER...) reads Qt's headers once for all files of TARGET,
# which is two fifths of the time that many of them take to compile. Only for programs: each
# file of the library compiles with nothing but what it includes itself.
function(vantix_precompile_headers target)
  target_precompile_headers(${target} PRIVATE ${ARGN})
  vantix_let_ccache_precompile(${target})
endfunction()

# vantix_reuse_headers(TARGET OTHER) takes what was precompiled for OTHER, whose flags are the same.
function(vantix_reuse_headers target other)
  target_precompile_headers(${target} REUSE_FROM ${other})
  vantix_let_ccache_precompile(${target})
endfunction()

# vantix_generate_moc(TARGET SOURCE) makes what SOURCE includes as its own .moc, where no other file
# of TARGET needs one: a fifth of the time that AUTOMOC makes of building many small programs.
function(vantix_generate_moc target source)
  get_filename_component(name ${source} NAME_WE)
  qt6_generate_moc(${source} ${CMAKE_CURRENT_BINARY_DIR}/${name}.moc TARGET ${target})
  set_target_properties(${target} PROPERTIES AUTOMOC OFF)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}.moc)
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
endfunction()

# What ccache wants to be told before it keeps files that begin with precompiled headers.
function(vantix_let_ccache_precompile target)
  target_compile_options(${target} PRIVATE
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
    "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endfunction()
