l: for (var k in {a: 1, "b": [1, , 2]}) { switch (k) { case "a": continue l; default: break l } }
do { k = new Array(3).concat(k, "x") } while (!k)