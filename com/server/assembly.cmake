# Writes the manifest of the component as an assembly: a host that names it creates the classes
# without any registration. What it lists is read from the type library's source.

# idl_entries(<variable> <file> <keyword>): items "<id>|<name>|<attributes>", one for each
# declaration with that keyword and an id.
function(idl_entries variable file keyword)
  file(READ "${file}" text)
  set(pattern "\\[([^]]*uuid\\(([0-9a-f-]+)\\)[^]]*)\\][ \n]*${keyword} ([A-Za-z]+)")
  string(REGEX MATCHALL "${pattern}" declarations "${text}")
  set(entries)
  foreach(declaration IN LISTS declarations)
    string(REGEX REPLACE "${pattern}" "\\2|\\3|\\1" entry "${declaration}")
    list(APPEND entries "${entry}")
  endforeach()
  set(${variable} "${entries}" PARENT_SCOPE)
endfunction()

function(qel_write_assembly_manifest output idl)
  file(GLOB idl_files CONFIGURE_DEPENDS "${idl}/*.idl")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${idl_files})
  set(entry_pattern "^([^|]+)\\|([^|]+)\\|.*$")

  idl_entries(library "${idl}/qel.idl" library)
  string(REGEX REPLACE "${entry_pattern}" "\\1" library_id "${library}")
  string(REGEX REPLACE ".*version\\(([0-9.]+)\\).*" "\\1" library_version "${library}")

  set(class_lines)
  idl_entries(classes "${idl}/qel.idl" coclass)
  list(FILTER classes EXCLUDE REGEX noncreatable)
  foreach(class IN LISTS classes)
    set(on_forms)
    if(class MATCHES ", control,")
      # The same as in the registry.
      set(on_forms "\n              miscStatusContent=\"recomposeonresize,cantlinkinside,insideout,activatewhenvisible,setclientsitefirst\"")
    endif()
    string(REGEX REPLACE "${entry_pattern}" "    <comClass clsid=\"{\\1}\" tlbid=\"{${library_id}}\"
              progid=\"QEL.\\2.1\" threadingModel=\"Apartment\"${on_forms}>
      <progid>QEL.\\2</progid>
    </comClass>\n" lines "${class}")
    string(APPEND class_lines "${lines}")
  endforeach()

  # The system's own proxy carries calls of dual interfaces between threads.
  set(interface_lines)
  foreach(file IN LISTS idl_files)
    idl_entries(interfaces "${file}" interface)
    list(FILTER interfaces INCLUDE REGEX dual)
    foreach(interface IN LISTS interfaces)
      string(REGEX REPLACE "${entry_pattern}" "  <comInterfaceExternalProxyStub name=\"\\2\"
      iid=\"{\\1}\" tlbid=\"{${library_id}}\"
      proxyStubClsid32=\"{00020424-0000-0000-C000-000000000046}\"/>\n" lines "${interface}")
      string(APPEND interface_lines "${lines}")
    endforeach()
  endforeach()

  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(architecture amd64)
  else()
    set(architecture x86)
  endif()
  configure_file("${CMAKE_CURRENT_SOURCE_DIR}/server/qelcom.manifest.in" "${output}" @ONLY)
endfunction()
