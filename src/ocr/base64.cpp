// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/base64.h"

#include <QByteArray>
#include <opencv2/imgcodecs.hpp>

std::string base64Encode(const unsigned char* data, std::size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size))
        .toBase64()
        .toStdString();
}

std::string Mat2Base64(const cv::Mat& picture, const std::string& ext)
{
    std::vector<uchar> bytes;
    try {
        if (picture.empty() || !cv::imencode(ext, picture, bytes))
            return {};
    } catch (const cv::Exception&) {
        return {}; // no such kind of file
    }
    return base64Encode(bytes.data(), bytes.size());
}
