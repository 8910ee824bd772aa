// Filling an array and sorting it by a function and by the texts of its elements.
function fill(n) {
    var list = [];
    var x = 1;
    for (var i = 0; i < n; i++) {
        x = (x * 16807) % 2147483647;
        list[i] = x % 100000;
    }
    return list;
}
var byNumber = fill(100000);
byNumber.sort(function (a, b) {
    return a - b;
});
var byText = fill(20000);
byText.sort();
print(byNumber[0], byNumber[50000], byNumber[99999], byText[10000]);
