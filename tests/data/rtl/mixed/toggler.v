module toggler #(parameter DIVIDE = 2) (input clk, output reg q);
  reg [DIVIDE-1:0] prescale;
  always @(posedge clk) begin
    prescale <= prescale + 1;
    if (&prescale) q <= ~q;
  end
endmodule
