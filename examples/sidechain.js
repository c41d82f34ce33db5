// Compresses the left channel of a stereo file by what is in the right one: the plug-in's side chain listens there.
//   vynhost script examples/sidechain.js PLUGIN -- IN.wav OUT.wav
"use strict";

if (args.length !== 2)
    throw new Error("wanted: IN.wav OUT.wav");

function count(buses) {
    return buses.reduce(function (channels, bus) { return channels + bus.channelCount; }, 0);
}

// The filter's channels are counted through all of its input buses. Some plug-ins have just one, with the side chain
// behind the channels that they give back.
function findSideChain() {
    var buses = filter.inputBuses;
    for (var place = 0; place < buses.length; ++place) {
        if (buses[place].type === "sidechain")
            return count(buses.slice(0, place));
    }
    return count(filter.outputBuses);
}

function set(name, value) {
    var index = findParameter(name);
    if (index >= 0)
        filter.setParameter(index, value);
    print(name + ": " + parameterText(index));
}

var channel = findSideChain();
if (channel >= count(filter.inputBuses))
    throw new Error(filter.displayName + " has no side chain");
for (var input = 1; input < channel; ++input)
    filter.removeChannelMapping(true, input);
filter.assignChannelMapping(true, channel, 1);
set("Sidechain", 1);
set("Threshold", 0.5);
var report = render(args[0], args[1]);
print("peak " + report.peakIn.toFixed(4) + " in, " + report.peakOut.toFixed(4) + " out");
report.notes.forEach(function (note) { print(note); });
