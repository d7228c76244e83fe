`include "eth_conf.vh"
module eth_top (input clk, input rst, input [7:0] rx, output [31:0] crc, output [1:0] tx);
  wire pri;
  // synopsys translate_off
  glbl glbl_only_in_simulation ();
  // synopsys translate_on
  mac_rx #(.POLY(`CRC_POLY)) rx_core (.clk(clk), .rst(rst), .do(rx), .bit(1'b0), .crc(crc), .priority(pri));
  mac_tx #(`LANES) tx_core (.clk(clk), .data_i({rx, rx}), .lane_o(tx));
`ifdef WITH_STATS
  stats counters (.clk(clk), .event_i(pri));
`endif
endmodule
module stats (input clk, input event_i);
  reg [15:0] count;
  always @(posedge clk) if (event_i) count <= count + 1;
endmodule
