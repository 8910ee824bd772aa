// Functions that keep variables of the function around them.
function counter(start) {
    var count = start;
    return function (step) {
        count += step;
        return count;
    };
}
function run(n) {
    var sum = 0;
    for (var i = 0; i < n; i++) {
        var next = counter(i);
        for (var j = 0; j < 20; j++) sum += next(j);
    }
    return sum;
}
print(run(50000));
