#pragma once

#include "platform/base/cfile.h"

#include <cstddef>
#include <string>
#include <vector>

/// What `object` saves, two hexadecimal digits a byte, in file order.
template <class T>
std::string savedHex(const T& object)
{
    CMemFile file;
    object.save(&file);
    file.Close();
    const char* digits = "0123456789abcdef";
    std::string hex;
    for (const std::byte byte : file.bytes()) {
        hex += digits[std::to_integer<unsigned>(byte) >> 4U];
        hex += digits[std::to_integer<unsigned>(byte) & 15U];
    }
    return hex;
}

/// Lets `object` read from the bytes that `hex` names. True when the file did not fail.
template <class T>
bool readHex(T& object, const std::string& hex)
{
    std::vector<std::byte> bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes.push_back(static_cast<std::byte>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    }
    CMemFile file(bytes);
    object.read(&file);
    return !file.failed();
}
