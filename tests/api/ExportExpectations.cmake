# What the library's export table must hold and must not hold, shared by the checks of the
# Linux shared library and the Windows DLL.

# Every plain function, by its plain name.
set(rlx_plain_functions
  CreatePropertyDB CreatePropertyDBByName AttachPropertyDB ReleasePropertyDB
  GetRootProperty GetRootPropertyByFile
  GetPropertyFromDB GetPropertyFromDB_noClone GetPropertyFromDBByEnum GetPropertyFromDBByNameEnum_noClone
  UpdateAllDBsForOCP UpdateAllDBsForSCTM UpdateDBForCTI UpdateDBForCTI_XTRIG UpdateDBForCTIEx UpdateSTMType
  RemoveAllowedFromDB DisableChildForDisabledAllowed UpdateSubProperties ConvertBack GetRLXServerName
  CastBoolean CastIBoolean CastIInteger CastILocation CastILocation2 CastIString
  CastInteger CastLocation CastLocation2 CastString)

# Internal helpers of the library: none may be exported.
set(rlx_internal_symbol_patterns
  "(^|[^A-Za-z_])uString([^A-Za-z_]|$)"
  "(^|[^A-Za-z_])uLogger"
  "(^|[^A-Za-z_])uTime([^A-Za-z_]|$)"
  "(^|[^A-Za-z_])uMutex([^A-Za-z_]|$)"
  "(^|[^A-Za-z_])uFile([^A-Za-z_]|$)"
  "(^|[^A-Za-z_])uEnvironment"
  "KW_MBR::Platform"
  "TraceStartup"
  "TargetOperations::PropertyDB([^A-Za-z_]|$)"
  "TargetOperations::PropertyDBHandler"
  "TargetOperations::DriverDB"
  "DriverRecord"
  "PropertyDbRegistry"
  "PropertyDbEntry"
  "XmlDbPath"
  "XmlFileExists"
  "LoadFailureText"
  "CpuTypeKeys"
  "CopyToCallerBuffer"
  "ClearCallerBuffer"
  "ExpandReplaceables"
  "HasReplaceables"
  "ReadAllowedReplacement"
  "ReadPropertyReplacement"
  "AddAllowedValueWithKey"
  "LibraryTrace")

# Class symbols both builds export: the classes outside programs create and catch.
set(rlx_exported_class_symbols
  "typeinfo for TargetOperations::Property"
  "vtable for TargetOperations::Property"
  "typeinfo for TargetOperations::StringProperty"
  "typeinfo for Kw::Mbr::Korva::korvaError"
  "TargetOperations::Property::Construct("
  "TargetOperations::StringProperty::Construct("
  "TargetOperations::ValueAttribute::ValueAttribute("
  "TargetOperations::PropertyKey::PropertyKey("
  "TargetOperations::NameAndDescription::NameAndDescription("
  "Kw::Mbr::Korva::korvaError::korvaError(")

# Appends to failures_var a line for every symbol of the list that demangled lacks.
function(rlx_require_class_symbols demangled failures_var)
  set(failures ${${failures_var}})
  foreach(symbol IN LISTS ARGN)
    string(FIND "${demangled}" "${symbol}" at)
    if(at EQUAL -1)
      list(APPEND failures "exported class symbol missing: ${symbol}")
    endif()
  endforeach()
  set(${failures_var} ${failures} PARENT_SCOPE)
endfunction()

# Appends to failures_var every line of demangled that matches one of the patterns.
function(rlx_refuse_internal_symbols demangled failures_var)
  set(failures ${${failures_var}})
  string(REPLACE "\n" ";" lines "${demangled}")
  foreach(line IN LISTS lines)
    foreach(pattern IN LISTS ARGN)
      if(line MATCHES "${pattern}")
        list(APPEND failures "internal symbol exported: ${line}")
        break()
      endif()
    endforeach()
  endforeach()
  set(${failures_var} ${failures} PARENT_SCOPE)
endfunction()
