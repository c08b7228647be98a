#include "Utility/src/Mac/LogUtilsMac.h"

#include "Platform/Process.h"
#include "Utility/src/Mac/FileSystemUtils.h"

std::string LogUtils::GetProcessName() {
    return FileSystemUtils::GetPathLastComponent(Platform::CurrentProgramPath());
}
