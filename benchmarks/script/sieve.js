// Reading and writing elements.
function sieve(n) {
    var composite = [];
    var count = 0;
    for (var i = 0; i <= n; i++) composite[i] = false;
    for (var p = 2; p <= n; p++) {
        if (!composite[p]) {
            count++;
            for (var m = p + p; m <= n; m += p) composite[m] = true;
        }
    }
    return count;
}
print(sieve(1000000));
