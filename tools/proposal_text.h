// What the commands that propose filters read and print.
#pragma once

#include <base/pel_buffer.h>

#include <string>
#include <vector>

/// A picture in grey, and the largest pel that its file can have.
struct GreyPicture {
    mvPelBuffer<double> pels;
    double white;
};

GreyPicture readGrey(const std::string& path);

/// A number with so many digits in all, none behind the point where they are not needed.
std::string shortNumber(double value, int digits = 3);

/// A text at the right end of a column.
std::string inColumn(const std::string& text, std::size_t width);

/// "mvfreq bandpass ... in.png out.png", to be pasted.
std::string lineFor(const std::vector<std::string>& arguments, const std::string& input);

/// Objects as a list of JSON, a line each.
std::string jsonLines(const std::vector<std::string>& objects);
