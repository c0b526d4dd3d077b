#include "interface_id.h"

#include <cstdio>

std::string InterfaceId::ToText() const {
    char text[40];
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                  static_cast<unsigned>(m_Data1), m_Data2, m_Data3, m_Data4[0], m_Data4[1],
                  m_Data4[2], m_Data4[3], m_Data4[4], m_Data4[5], m_Data4[6], m_Data4[7]);
    return text;
}
