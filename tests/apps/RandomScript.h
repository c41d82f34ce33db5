#pragma once

#include <array>
#include <cstddef>
#include <random>
#include <string>

namespace vyntest {

/// Writes scripts by a small grammar: whatever the language allows and nobody would write, with the application's items
/// all over it. Equal seeds write equal scripts.
class RandomScript {
public:
    explicit RandomScript(unsigned seed) : mRandom(seed) {}

    std::string Write() {
        std::string text = Pick(std::array{"", "'use strict';", "var a = [3, 1, 2], b = filter, c;"});
        for (unsigned count = 1 + Below(6); count > 0; --count)
            text += Statement(3) + "\n";
        return text;
    }

private:
    // Not std::uniform_int_distribution, which differs from library to library.
    unsigned Below(unsigned bound) { return static_cast<unsigned>(mRandom() % bound); }

    template <std::size_t N>
    std::string Pick(std::array<char const*, N> const& texts) {
        return texts[Below(N)];
    }

    std::string Variable() { return Pick(std::array{"a", "b", "c", "this", "filter", "args", "catalogue", "f"}); }

    std::string Literal() {
        return Pick(std::array{"0", "1", "-1", "NaN", "1e308", "70000", "null", "undefined", "true", "'x'", "[]", "{}",
                               "[1, 'y', null]", "'\\ud800\\u0000'", "/(a*)*b/g", "createBus('main', 'mono')",
                               "createBus('sidechain', '5.1')", "filter.inputBuses", "filter.outputBuses"});
    }

    std::string Arguments(unsigned depth) {
        std::string text;
        for (unsigned count = Below(4); count > 0; --count)
            text += (text.empty() ? "" : ", ") + Expression(depth);
        return "(" + text + ")";
    }

    std::string Callable() {
        return Pick(std::array{"filter.getParameter",
                               "filter.setParameter",
                               "filter.requestBusConfiguration",
                               "filter.getFilterChannelForTarget",
                               "filter.assignChannelMapping",
                               "filter.removeChannelMapping",
                               "open",
                               "close",
                               "render",
                               "createBus",
                               "parameterName",
                               "findParameter",
                               "parameterText",
                               "print",
                               "isEqual",
                               "f",
                               "new f",
                               "Array",
                               "new RegExp",
                               "String",
                               "Object",
                               "JSON.stringify",
                               "JSON.parse",
                               "eval",
                               "Function",
                               "filter.getParameter.call",
                               "filter.setParameter.apply",
                               "print.bind",
                               "Number",
                               "Object.defineProperty",
                               "Object.keys",
                               "Object.freeze",
                               "Object.create",
                               "Object.setPrototypeOf",
                               "Math.max.apply",
                               "parseInt",
                               "new Date",
                               "isNaN",
                               "Proxy",
                               "new Uint8Array",
                               "new vynaudiofilterhost.AudioFilter",
                               "decodeURIComponent"});
    }

    std::string Member() {
        return Pick(std::array{".length",    ".toString()",  ".sort(f)",        ".forEach(f)", ".map(f)",
                               ".join(a)",   ".push(a, b)",  ".slice(1)",       ".concat(a)",  ".replace(/./g, f)",
                               ".split('')", ".constructor", ".prototype",      ".__proto__",  ".valueOf()",
                               ".ID",        ".displayName", ".parameterCount", ".inputBuses", "[0]",
                               "[a]",        ".reduce(f)",   ".indexOf(b)",     ".name",       ".layout",
                               ".channels"});
    }

    std::string Expression(unsigned depth) {
        if (depth == 0)
            return Below(2) == 0 ? Literal() : Variable();
        switch (Below(8)) {
        case 0:
            return "(" + Expression(depth - 1) +
                   Pick(std::array{" + ", " - ", " * ", " % ", " < ", " === ", " in ", " instanceof ", " && ", ", ",
                                   " << "}) +
                   Expression(depth - 1) + ")";
        case 1:
        case 2:
            return Callable() + Arguments(depth - 1);
        case 3:
        case 4:
            return "(" + Expression(depth - 1) + ")" + Member();
        case 5:
            return "{get x() { return " + Expression(depth - 1) + "; }, toString: f, toJSON: f}";
        case 6:
            return "(" + Variable() + " = " + Expression(depth - 1) + ")";
        default:
            return "function (a, b) { " + Statement(depth - 1) + " return " + Expression(depth - 1) + "; }";
        }
    }

    std::string Statement(unsigned depth) {
        if (depth == 0)
            return ";(" + Expression(1) + ");";
        switch (unsigned const kind = Below(depth == 3 ? 400 : 200); kind < 8 ? kind : 8 + kind % 16) {
        case 8:
            return "for (var i = 0; i < 5; ++i) { " + Statement(depth - 1) + " }";
        case 9:
            return "try { " + Statement(depth - 1) + " } catch (e) { " + Statement(depth - 1) + " } finally { " +
                   Statement(depth - 1) + " }";
        case 10:
        case 11:
            return "function f(a, b) { " + Statement(depth - 1) + " return " +
                   Pick(std::array{"f(a) + 1", "[a].map(f)", "a", "'' + {toString: f}", "f"}) + "; }";
        case 12:
            return "for (var k in " + Variable() + ") { " + Statement(depth - 1) + " }";
        case 13:
            return "throw " + Expression(depth - 1) + ";";
        case 0:
            return "c = 'ab'; for (var i = 0; i < 30; ++i) c += c;";
        case 1:
            return "a = []; for (var i = 0; i < 20000; ++i) a.push([a, " + Literal() + "]);";
        case 2:
            return depth == 3 ? "for (;;) { try { " + Statement(depth - 1) + " for (;;); } catch (e) { } }" : "";
        default:
            return Below(4) == 0 ? "try { " + Statement(depth - 1) + " } catch (e) { print(e.stack); }"
                                 : "c = (" + Expression(depth) + ");";
        }
    }

    std::mt19937 mRandom;
};

} // namespace vyntest
