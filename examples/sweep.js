// Goes through the values of a parameter in five steps and renders a file at each of them.
//   vynhost script examples/sweep.js PLUGIN -- IN.wav OUTFOLDER PARAMETER
"use strict";

if (args.length !== 3)
    throw new Error("wanted: IN.wav OUTFOLDER PARAMETER");
var index = findParameter(args[2]);
if (index < 0)
    throw new Error(filter.displayName + " has no parameter " + args[2]);

var first = filter.getParameter(index);
for (var step = 0; step <= 4; ++step) {
    filter.setParameter(index, step / 4);
    var report = render(args[0], args[1] + "/step" + step + ".wav");
    print(parameterName(index) + " " + parameterText(index) + ": RMS " + report.rmsIn.toFixed(4) + " in, " +
          report.rmsOut.toFixed(4) + " out");
}
filter.setParameter(index, first);
