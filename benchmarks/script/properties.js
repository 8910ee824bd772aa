// Named properties, methods and prototypes.
function Point(x, y) {
    this.x = x;
    this.y = y;
}
Point.prototype.add = function (other) {
    this.x += other.x;
    this.y += other.y;
    return this;
};
function run(n) {
    var sum = new Point(0, 0);
    var step = new Point(1, 2);
    for (var i = 0; i < n; i++) {
        step.x = i % 3;
        sum.add(step);
    }
    return sum;
}
var result = run(1500000);
print(result.x, result.y);
