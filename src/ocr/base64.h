// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <string>

// Standard base64 (RFC 4648) without line breaks.
std::string base64Encode(const unsigned char* data, std::size_t size);

// The picture encoded as the kind of file that `ext` names (".jpg", ".png"), in base64; empty when the
// picture is empty or the kind unknown.
std::string Mat2Base64(const cv::Mat& picture, const std::string& ext);
