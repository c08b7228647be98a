#include "LogSession/DataLogger.h"

#include "LogSession/LogSession.h"
#include "Utility/src/RecordNames.h"

bool DataLogger::LogInvalidData(const char* errorType, const char* value) const {
    if (!m_session || !errorType || !value)
        return false;
    const int group = m_session->GenerateInvalidGroup();
    m_session->DataRecTag(group, RecordNames::kErrorType, errorType);
    m_session->DataRecTag(group, RecordNames::kErrorValue, value);
    return true;
}
