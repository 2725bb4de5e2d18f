# The index of the theme that holds the icons of applications, hicolor, as far as items' icons can be
# in it. The installed one lists 649 folders, for scores of kinds of icons that no item has, and the
# toolkit reads all of it to find the first icon: as much work as the loading of all libraries.
set(KESTREL_ICON_SIZES 16 22 24 32 36 48 64 72 96 128 192 256 512)
set(KESTREL_LARGE_ICON_SIZES 256 512) # the theme has these serve smaller sizes as well
set(KESTREL_ICON_CONTEXTS actions apps categories devices mimetypes places status)

# kestrel_add_icon_index(TARGET PREFIX): the index as a resource of the target.
function(kestrel_add_icon_index target prefix)
  foreach(size IN LISTS KESTREL_ICON_SIZES)
    set(type "Size=${size}\nType=Threshold\n")
    if(size IN_LIST KESTREL_LARGE_ICON_SIZES)
      set(type "MinSize=64\nSize=${size}\nMaxSize=${size}\nType=Scalable\n")
    endif()
    foreach(context IN LISTS KESTREL_ICON_CONTEXTS)
      list(APPEND folders ${size}x${size}/${context})
      string(APPEND sections "\n[${size}x${size}/${context}]\n${type}")
    endforeach()
    foreach(context IN ITEMS apps mimetypes)
      list(APPEND folders ${size}x${size}@2/${context})
      string(APPEND sections "\n[${size}x${size}@2/${context}]\nScale=2\n${type}")
    endforeach()
  endforeach()
  foreach(context IN LISTS KESTREL_ICON_CONTEXTS)
    list(APPEND folders scalable/${context})
    string(APPEND sections
      "\n[scalable/${context}]\nMinSize=1\nSize=128\nMaxSize=256\nType=Scalable\n")
  endforeach()
  list(APPEND folders symbolic/apps)
  string(APPEND sections "\n[symbolic/apps]\nMinSize=8\nSize=16\nMaxSize=512\nType=Scalable\n")
  list(JOIN folders "," directories)
  set(base ${CMAKE_CURRENT_BINARY_DIR}/icon_index)
  set(index ${base}/hicolor/index.theme)
  file(CONFIGURE OUTPUT ${index} @ONLY
    CONTENT "[Icon Theme]\nName=Hicolor\nHidden=true\nDirectories=@directories@\n@sections@")
  # The toolkit takes the index's own folder for one with icons as well. This says that it has none:
  # the table of a cache of icons in GTK's form, version 1.0, with one empty bucket and no folder.
  set(cache ${base}/hicolor/icon-theme.cache)
  configure_file(resources/icon_index/icon-theme.cache ${cache} COPYONLY)
  qt_add_resources(${target} icon_index PREFIX ${prefix} BASE ${base} FILES ${index} ${cache}
    OPTIONS ${KESTREL_RCC_OPTIONS})
endfunction()
