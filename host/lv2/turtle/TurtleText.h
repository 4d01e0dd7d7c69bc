#pragma once

#include <string>

// Pieces of Turtle text (the RDF syntax of LV2's bundle descriptions) as the bundle's generator
// writes them.
//
// Thread contract: any thread; functions of their arguments.
class TurtleText
{
public:
    // A string literal in double quotes, with quotes, backslashes and line breaks escaped.
    static std::string literal(const std::string& text);
    // A decimal number that reads back as the same float: the fewest decimals (at least one, as a
    // Turtle integer would give hosts another type) that do, as "-100.0", "1.5", "0.3"; a number
    // that needs more than nine takes an exponent. NaN and infinity have no Turtle form and give
    // "0.0".
    static std::string number(float value);
    // A URI in angle brackets.
    static std::string uri(const std::string& text);
};
