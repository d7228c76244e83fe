module core_sram (core_mem_if.slave bus);
  logic [31:0] mem [0:4095];
  initial $readmemh("no_such_firmware.hex", mem);
  always_ff @(posedge bus.clk) begin
    if (bus.req && bus.we) mem[bus.addr] <= bus.wdata;
    bus.rdata <= mem[bus.addr];
  end
  assign bus.gnt = bus.req;
endmodule
