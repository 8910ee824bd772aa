// Nested loops over numbers in locals.
function run(n) {
    var sum = 0;
    for (var i = 0; i < n; i++)
        for (var j = 0; j < n; j++)
            for (var k = 0; k < 20; k++) sum += (i * j + k) % 7;
    return sum;
}
print(run(600));
