function f(a, b) { var l = a; with (b) { l++; x = y } return function () { return l + this.q[2]-- } }
f(1, {y: 2})()