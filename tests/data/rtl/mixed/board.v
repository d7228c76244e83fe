module board (input clk, output [7:0] count, output [1:0] led);
  pulse #(.WIDTH(8)) counter (.clk(clk), .start(1'b1), .count(count));
  toggler t (.clk(clk), .q(led[0]));
endmodule
