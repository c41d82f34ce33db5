// Asks a plug-in for mono and tells what it makes of that. With files, it renders one as the plug-in is then.
//   vynhost script examples/mono.js PLUGIN [-- IN.wav OUT.wav]
"use strict";

function describe(buses) {
    return buses.map(function (bus) {
        return bus.name + " (" + bus.type + ", " + bus.layout + ")";
    }).join(", ") || "none";
}

function askForMono(buses) {
    return buses.map(function (bus) { return bus.type === "main" ? createBus("main", "mono") : bus; });
}

print(filter.displayName + ": " + describe(filter.inputBuses) + " -> " + describe(filter.outputBuses));
filter.requestBusConfiguration(askForMono(filter.inputBuses), askForMono(filter.outputBuses));
print("asked for mono: " + describe(filter.inputBuses) + " -> " + describe(filter.outputBuses));

var isMono = filter.outputBuses[0].channelCount === 1;
print(isMono ? "it is mono now" : "it does not do mono");
if (args.length === 2) {
    var report = render(args[0], args[1]);
    print("rendered " + report.channels + " channels");
    report.notes.forEach(function (note) { print(note); });
}
