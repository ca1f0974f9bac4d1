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
